#include "Program.h"

int wmain(int argc, wchar_t** argv) {
    return RunProgram({argv + 1, argv + argc});
}
