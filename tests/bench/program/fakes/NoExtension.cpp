/// A library without the entry of an extension.
extern "C"
#ifdef _WIN32
    __declspec(dllexport)
#else
    __attribute__((visibility("default")))
#endif
        int SomethingElse();

int SomethingElse() { return 0; }
