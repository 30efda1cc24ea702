// The entry point: everything happens in VantleMain (the start-up order, the
// main loop and shutdown live in app/). Arguments are ignored.
#include "app/main_loop.h"

int main() {
    return VantleMain();
}
