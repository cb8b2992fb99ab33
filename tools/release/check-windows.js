// Checks an unpacked archive on Windows and collects the results in one text file. From the folder of the archive:
//   cscript //nologo check-windows.js           runs the checks and asks what a person sees, about ten minutes
//   cscript //nologo check-windows.js /auto     runs the checks alone
// The file, mxov-results.txt, is written to the folder for temporary files; its path is printed at the end. Nothing is
// registered, installed or sent. Exit code: 0 nothing failed, 1 something did.
var shell = new ActiveXObject("WScript.Shell");
var files = new ActiveXObject("Scripting.FileSystemObject");
var folder = files.GetParentFolderName(WScript.ScriptFullName);
var temporary = shell.ExpandEnvironmentStrings("%TEMP%").replace(/\0/g, "") + "\\"; // Wine counts the end of the text
var work = temporary + "mxov-check-" + new Date().getTime();
var lines = [];
var failures = 0;

function report(line) {
    lines.push(line);
    WScript.Echo(line);
}

function result(name, passed, detail) {
    failures += passed ? 0 : 1;
    report((passed ? "passed   " : "FAILED   ") + name + (detail ? ": " + detail : ""));
}

// Runs a check, which returns an empty text when it passed and otherwise what was wrong. What the check needs of the system
// may be missing there; the check is then left out.
function check(name, needed, run) {
    var fault;
    try {
        needed();
    } catch (error) {
        report("skipped  " + name + ": this system cannot do that");
        return;
    }
    try {
        fault = run();
    } catch (error) {
        fault = "error " + (error.number >>> 0).toString(16) + " " + error.message;
    }
    result(name, fault === "", fault);
}

function nothing() {
}

function activationContext() {
    return new ActiveXObject("Microsoft.Windows.ActCtx");
}

function activation() {
    return shell.AppActivate("no window has this title");
}

function inFolder(name) {
    return folder + "\\" + name;
}

function inWork(name) {
    return work + "\\" + name;
}

// Runs a program without a window and returns its exit code.
function run(program, words) {
    var line = '"' + inFolder(program) + '"';
    for (var i = 0; i < words.length; ++i) {
        line += ' "' + words[i] + '"';
    }
    return shell.Run(line, 0, true);
}

function expectExit(program, words, expected) {
    var code = run(program, words);
    return code === expected ? "" : words[0] + " ended with " + code;
}

function registryValue(key) {
    try {
        return String(shell.RegRead(key));
    } catch (error) {
        return "unknown";
    }
}

function describeSystem() {
    var system = "HKLM\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\";
    report("system   " + registryValue(system + "ProductName") + ", build " + registryValue(system + "CurrentBuild") + "." +
           registryValue(system + "UBR"));
    report("user     language " + registryValue("HKCU\\Control Panel\\International\\LocaleName") + ", dpi " +
           registryValue("HKCU\\Control Panel\\Desktop\\WindowMetrics\\AppliedDPI"));
}

function checkFiles() {
    var names = ["MXOVDocViewCtrl.ocx", "mxovshare.dll", "viewer.exe", "mxovpkg.exe"];
    var version = files.GetFileVersion(inFolder(names[0]));
    report("version  " + version);
    for (var i = 0; i < names.length; ++i) {
        if (files.GetFileVersion(inFolder(names[i])) !== version) {
            return names[i] + " has another version";
        }
    }
    return "";
}

function checkCommandLine() {
    var sample = inFolder("samples\\bracket.mxov");
    return expectExit("mxovpkg.exe", ["extract", sample, inWork("unpacked")], 0) ||
        expectExit("mxovpkg.exe", ["create", inWork("unpacked"), inWork("again.mxov")], 0) ||
        expectExit("mxovpkg.exe", ["diff", sample, inWork("again.mxov"), "--exit-code"], 0) ||
        expectExit("mxovpkg.exe", ["extract", inFolder("README.txt"), inWork("none")], 1);
}

function checkControl() {
    var context = activationContext();
    context.Manifest = inFolder("MXOVDocViewCtrl.manifest");
    var control = context.CreateObject("MXOVTREETAB.MXOVDocViewCtrlVS2015.13");
    var path = inWork("unpacked") + "\\";
    control.LoadFile(path, "");
    control.InputParameter = path;
    if (control.InputParameter !== path) {
        return "InputParameter is " + control.InputParameter;
    }
    control.ClearAllData();
    control.Close();
    return "";
}

function checkViewer() {
    var caption = "bracket.mxov";
    var viewer = shell.Exec('"' + inFolder("viewer.exe") + '" "' + inFolder("samples\\bracket.mxov") + '"');
    for (var tenths = 0; tenths < 300 && viewer.Status === 0; ++tenths) {
        if (shell.AppActivate(viewer.ProcessID) && shell.AppActivate(caption)) {
            viewer.Terminate();
            return "";
        }
        WScript.Sleep(100);
    }
    return viewer.Status === 0 ? "no window within 30 seconds" : "it ended with " + viewer.ExitCode;
}

// What a person looks at: where, what to do, what should be seen.
var questions = [
    ["Start viewer.exe by double-click from the unpacked folder.", "A window with a page, a button and no error"],
    ["Drop samples\\bracket.mxov on it.", "A picture on the left, four sections with icons, sizes and dates on the right"],
    ["Click each of the four headers twice.", "Each section folds and unfolds at once, without flicker"],
    ["Click a document of the first section, then move the viewer.", "The properties stay beside the lists and follow"],
    ["Change the description, then press Update.", "An asterisk in the title; no keystroke is lost"],
    ["Double-click a G-code file.", "It opens in its program, or Windows asks for one"],
    ["Drop any text file on the window and choose Copy.", "It appears under Additional Documents with today's date"],
    ["Press Save, close the viewer, open the package again.", "Nothing is asked; the document and the description are there"],
    ["Press F1.", "The help opens"],
    ["Move the window to a monitor of another scale, or change the scale in Settings.", "Texts are sharp and nothing is cut off"],
    ["Turn on a high-contrast theme.", "All texts and the focus can be seen"],
    ["Start Narrator and press Tab through the window.", "Every list and button is named"]
];

function ask(question) {
    WScript.Echo("");
    WScript.Echo(question[0]);
    WScript.StdOut.Write("Expected: " + question[1] + ".\nIs it so? [y]es, [n]o, [s]kip, or a remark: ");
    var answer = WScript.StdIn.ReadLine();
    if (/^s(kip)?$/i.test(answer)) {
        report("skipped  " + question[0]);
    } else {
        result(question[0], /^y(es)?$/i.test(answer), /^(y(es)?|no?)$/i.test(answer) ? "" : answer);
    }
}

function writeResults() {
    var path = temporary + "mxov-results.txt";
    var file = files.CreateTextFile(path, true, true);
    for (var i = 0; i < lines.length; ++i) {
        file.WriteLine(lines[i]);
    }
    file.Close();
    WScript.Echo("");
    WScript.Echo("Please send " + path);
}

files.CreateFolder(work);
describeSystem();
check("the programs have one version", nothing, checkFiles);
check("mxovpkg unpacks, packs, compares and refuses", nothing, checkCommandLine);
check("the control works without registration", activationContext, checkControl);
check("the viewer opens the sample", activation, checkViewer);
if (WScript.Arguments.Count() === 0 || WScript.Arguments(0) !== "/auto") {
    for (var i = 0; i < questions.length; ++i) {
        ask(questions[i]);
    }
}
files.DeleteFolder(work, true);
report(failures === 0 ? "nothing failed" : failures + " failed");
writeResults();
WScript.Quit(failures === 0 ? 0 : 1);
