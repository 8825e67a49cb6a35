/* Part of every DLL of the cross build: what the thread library keeps is given back when the DLL is unloaded.

   The thread library is linked into each DLL. On first use it takes a slot of thread-local storage, of which a process
   has 1088, and two handles for each thread; and it never gives them back. A host that loads and unloads the plug-in
   over and over would come to an end there. */

#include <stdlib.h>
#include <windows.h>

/* The thread library's own clean-up at the end of a thread; missing in a DLL that does without the thread library. */
extern PIMAGE_TLS_CALLBACK __xl_f __attribute__((weak));

static DWORD slot = TLS_OUT_OF_INDEXES;
static BOOL unloading = FALSE;

static DWORD WINAPI TakeSlot(void) {
  typedef DWORD(WINAPI * Function)(void);
  const Function take = (Function)(void*)GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "TlsAlloc");
  slot = take();
  return slot;
}

/* Stands in for the entry of this name in the DLL's import table, so that the slot's number is known. */
DWORD(WINAPI* __imp_TlsAlloc)(void) = TakeSlot;

/* Called by the system before all else when the DLL goes. Without `reserved` the process goes on; at the end of a
   process there is nothing to give back, and the locks may be held by threads that are no more. */
static void NTAPI Notice(PVOID module, DWORD reason, PVOID reserved) {
  (void)module;
  if (reason == DLL_PROCESS_DETACH) unloading = reserved == NULL;
}
static const PIMAGE_TLS_CALLBACK notice __attribute__((section(".CRT$XLY"), used)) = Notice;

static void GiveBack(void) {
  if (!unloading || slot == TLS_OUT_OF_INDEXES) return;
  if (&__xl_f != NULL) __xl_f(NULL, DLL_THREAD_DETACH, NULL);
  TlsFree(slot);
  slot = TLS_OUT_OF_INDEXES;
}

/* Registered before all others, so it runs after all others: destructors may still need the thread library. */
__attribute__((constructor(101))) static void Register(void) { atexit(GiveBack); }
