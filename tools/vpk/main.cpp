// vpk: create, list, edit and unpack .vpk packages. See vpk_commands.h.
#include <cstdio>

#include "vpk_commands.h"

int main(int argc, char** argv) {
    return VpkMain(argc, argv, stdout, stderr);
}
