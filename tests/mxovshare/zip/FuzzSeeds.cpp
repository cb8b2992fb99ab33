// Writes small honest packages into the folder named on the command line, from which the fuzzer starts.
#include "ZipForge.h"

#include <cstdio>
#include <fstream>

namespace {

ForgedEntry WithDescriptor() {
    ForgedEntry entry = MakeEntry("a.txt", "content", true);
    entry.data += "PK\7\10" + Number(entry.central.crc32, 4) + Number(entry.central.packedSize, 4) +
                  Number(entry.central.size, 4);
    entry.local.flags = entry.central.flags = 0x0808;
    return entry;
}

ForgedEntry Wide() {
    ForgedEntry entry = MakeEntry("wide.txt");
    for (ForgedHeader* header : {&entry.local, &entry.central}) {
        header->size = header->packedSize = 0xFFFFFFFF;
        header->extra = Number(1, 2) + Number(16, 2) + Number(7, 8) + Number(7, 8);
    }
    return entry;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    ForgedEnd comment;
    comment.comment = "comment";
    int number = 0;
    for (const std::string& zip : {ForgeZip({}), ForgeZip({MakeEntry("a.txt")}),
                                   ForgeZip({MakeEntry("d/"), MakeEntry("d/b.txt", "b", true)}),
                                   ForgeZip({WithDescriptor(), MakeEntry("b")}), ForgeZip({Wide()}),
                                   ForgeZip({MakeEntry("a")}, comment)}) {
        std::ofstream file(std::string(argv[1]) + "/seed" + std::to_string(number++), std::ios::binary);
        file << zip;
        if (!file.flush()) {
            return 1;
        }
    }
    return 0;
}
