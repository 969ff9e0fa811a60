// The sibling of the class library. Nothing calls into it: to be loaded, and to stay so while the process lives, is its
// whole task.
#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) { return TRUE; }
