// What the tests register with the shell: does nothing until the test that looks at its command
// line ends it, and ends by itself when the test does not.

#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    Sleep(60'000);
    return 0;
}
