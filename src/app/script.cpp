// Command scripts: a text file fed line by line through ExecuteCommand. Reads
// are 199 bytes (198 characters), so an over-long physical line runs as
// several commands; the file is opened directly, never through the packages.
#include <cstdio>
#include <cstring>

#include "app/console.h"

static void StripLineEnd(char* line) {
    size_t length = strlen(line);
    while (length > 0 && (line[length - 1] == '\r' || line[length - 1] == '\n')) {
        line[--length] = 0;
    }
}

void RunScript(const char* path, int firstLine) {
    if (!path) {
        return;
    }
    FILE* file = fopen(path, "rb");
    if (!file) {
        return;
    }
    char line[199];
    for (int i = 0; i < firstLine; i++) {
        if (!fgets(line, sizeof(line), file)) {
            break;
        }
    }
    while (fgets(line, sizeof(line), file)) {
        StripLineEnd(line);
        ExecuteCommand(line);
    }
    fclose(file);
    g_console.Print("Script '%s' completed successfully", path);
}
