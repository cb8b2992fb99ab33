// A library that loads and is no help engine.
extern "C" __declspec(dllexport) int Nothing() {
    return 0;
}
