#include "Program.h"

#include "common/Utf8.h"

#include <algorithm>
#include <iterator>

int main(int argc, char** argv) {
    std::vector<std::wstring> words;
    std::transform(argv + 1, argv + argc, std::back_inserter(words), common::FromNameBytes);
    return RunProgram(words);
}
