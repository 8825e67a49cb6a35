extern "C"
#ifdef _WIN32
    __declspec(dllimport)
#endif
        int AbsentDriverCall();

/// An extension's entry, in a library that cannot be loaded.
extern "C"
#ifdef _WIN32
    __declspec(dllexport)
#else
    __attribute__((visibility("default")))
#endif
        void* __getExtensionInfo();

void* __getExtensionInfo() {
  return AbsentDriverCall() == 0 ? nullptr : reinterpret_cast<void*>(&AbsentDriverCall);
}
