// What the tests register with the shell: waits for the test that looks at its command line to end
// it, and ends by itself when the test does not.

#include <windows.h>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    SetTimer(/*hWnd=*/nullptr, /*nIDEvent=*/0, /*uElapse=*/60'000, /*lpTimerFunc=*/nullptr);
    MSG message;
    GetMessageA(&message, /*hWnd=*/nullptr, 0, 0);
    return 0;
}
