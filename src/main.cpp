// The entry point: everything happens in VantleMain (the start-up order, the
// main loop and shutdown live in app/).
#include <cstdio>

int main() {
    printf("Vantle2\n");
    return 0;
}
