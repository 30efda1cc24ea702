#include "platform/sys_files.h"

#include <dirent.h>
#include <strings.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

int Sys_ListFiles(const char* directory, const char* extension,
                  int (*visit)(const char* name, void* context), void* context) {
    char native[1024];
    Sys_ToNativePath(directory, native, sizeof(native));
    DIR* dir = opendir(native);
    if (!dir) {
        return 0;
    }
    size_t extLength = strlen(extension);
    while (struct dirent* entry = readdir(dir)) {
        size_t length = strlen(entry->d_name);
        if (length < extLength || strcasecmp(entry->d_name + length - extLength, extension) != 0) {
            continue;
        }
        if (!visit(entry->d_name, context)) {
            break;
        }
    }
    closedir(dir);
    return 1;
}

void Sys_ToNativePath(const char* path, char* out, int outSize) {
    if (outSize <= 0) {
        return;
    }
    int i = 0;
    for (; path[i] && i < outSize - 1; i++) {
        out[i] = path[i] == '\\' ? '/' : path[i];
    }
    out[i] = 0;
}

int Sys_WriteFileAtomic(const char* path, const void* data, unsigned int length) {
    char native[1024];
    Sys_ToNativePath(path, native, sizeof(native));
    char temporary[1100];
    snprintf(temporary, sizeof(temporary), "%s.tmp%ld", native, static_cast<long>(getpid()));
    FILE* file = fopen(temporary, "wb");
    if (!file) {
        return 0;
    }
    bool ok = length == 0 || fwrite(data, 1, length, file) == length;
    ok = fflush(file) == 0 && ok;
    ok = fsync(fileno(file)) == 0 && ok;
    ok = fclose(file) == 0 && ok;
    if (!ok || rename(temporary, native) != 0) {
        remove(temporary);
        return 0;
    }
    return 1;
}
