// validate.js FILE...: validates bills of materials with the library of the standard's makers. Prints what is wrong.
// Exit code: 0 all are valid, 1 one is not.
"use strict";
const fs = require("node:fs");
const { createRequire } = require("node:module");
const path = require("node:path");

// The packages are not beside this script but where they were installed.
const library = createRequire(path.join(process.cwd(), "package.json"))("@cyclonedx/cyclonedx-library");

async function faultsOf(file) {
    const text = fs.readFileSync(file, "utf8");
    const version = library.Spec.Version[`v${JSON.parse(text).specVersion?.replace(".", "dot")}`];
    return version ? new library.Validation.JsonStrictValidator(version).validate(text) : "specVersion is not known";
}

async function main(files) {
    for (const file of files) {
        const faults = await faultsOf(file);
        if (faults !== null) {
            console.error(`${file}: ${JSON.stringify(faults, null, 1)}`);
            process.exitCode = 1;
        }
    }
}

main(process.argv.slice(2)).catch((error) => {
    console.error(error.message);
    process.exitCode = 1;
});
