/// A driver's library; built so that another can be linked to it, and lies where no loader looks.
extern "C"
#ifdef _WIN32
    __declspec(dllexport)
#else
    __attribute__((visibility("default")))
#endif
        int AbsentDriverCall();

int AbsentDriverCall() { return 0; }
