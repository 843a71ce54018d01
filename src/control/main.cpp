#include "control/main_loop.h"
#include "control/start_up.h"
#include "support/files.h"

int main() {
    EnsureStandardStreams();
    ProgramInit();
    MainControl();
    return 0;
}
