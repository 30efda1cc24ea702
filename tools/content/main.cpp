// vantle-content: builds the game's data directory.
//   vantle-content --content <repo>/content --out <run>/data [--fonts DIR] [--no-bake]
//   vantle-content --icons DIR [--fonts DIR]     (the desktop's icons, DIR/hicolor/...)
#include <cstdio>
#include <cstring>
#include <string>

#include "content_build.h"
#include "platform/sys_clock.h"

int main(int argc, char** argv) {
    ContentOptions options{"content", CONTENT_DEFAULT_FONT_DIRECTORY, true};
    std::string out = "data";
    std::string icons;
    for (int i = 1; i < argc; i++) {
        bool more = i + 1 < argc;
        if (strcmp(argv[i], "--content") == 0 && more) {
            options.contentDirectory = argv[++i];
        } else if (strcmp(argv[i], "--fonts") == 0 && more) {
            options.fontDirectory = argv[++i];
        } else if (strcmp(argv[i], "--out") == 0 && more) {
            out = argv[++i];
        } else if (strcmp(argv[i], "--icons") == 0 && more) {
            icons = argv[++i];
        } else if (strcmp(argv[i], "--no-bake") == 0) {
            options.bake = false;
        } else {
            fprintf(stderr,
                    "usage: vantle-content --content DIR --out DIR [--fonts DIR] [--no-bake]\n"
                    "       vantle-content --icons DIR [--fonts DIR]\n");
            return 2;
        }
    }
    std::string error;
    if (!icons.empty()) {
        if (!WriteDesktopIcons(options.fontDirectory, icons, &error)) {
            fprintf(stderr, "vantle-content: %s\n", error.c_str());
            return 1;
        }
        return 0;
    }
    uint32_t start = Sys_TickCount();
    AssetList list;
    if (!BuildContent(options, &list, &error) || !WritePackages(list, out, &error)) {
        fprintf(stderr, "vantle-content: %s\n", error.c_str());
        return 1;
    }
    size_t bytes = 0;
    for (const Asset& a : list.assets) {
        bytes += a.bytes.size();
    }
    printf("vantle-content: %zu assets, %zu bytes into %s in %u ms\n", list.assets.size(), bytes, out.c_str(),
           Sys_TickCount() - start);
    return 0;
}
