#include "platform/sys_files.h"

#include <dirent.h>
#include <errno.h>
#include <strings.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

int Sys_ListFiles(const char* directory, const char* extension, int (*visit)(const char* name, void* context),
                  void* context) {
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

static int s_writeError;

// Keeps the first error of a failed write: the clean-up after it may set errno again.
static void NoteWriteError(bool* ok) {
    if (*ok) {
        s_writeError = errno;
        *ok = false;
    }
}

int Sys_WriteFileAtomic(const char* path, const void* data, unsigned int length) {
    char native[1024];
    Sys_ToNativePath(path, native, sizeof(native));
    char temporary[1100];
    snprintf(temporary, sizeof(temporary), "%s.tmp%ld", native, static_cast<long>(getpid()));
    FILE* file = fopen(temporary, "wb");
    if (!file) {
        s_writeError = errno;
        return 0;
    }
    bool ok = true;
    if (length != 0 && fwrite(data, 1, length, file) != length) {
        NoteWriteError(&ok);
    }
    if (fflush(file) != 0 || fsync(fileno(file)) != 0) {
        NoteWriteError(&ok);
    }
    if (fclose(file) != 0) {
        NoteWriteError(&ok);
    }
    if (ok && rename(temporary, native) != 0) {
        NoteWriteError(&ok);
    }
    if (!ok) {
        remove(temporary);
        return 0;
    }
    return 1;
}

const char* Sys_WriteErrorText() {
    return strerror(s_writeError);
}

unsigned char* Sys_ReadWholeFile(const char* path, unsigned int* length) {
    char native[1024];
    Sys_ToNativePath(path, native, sizeof(native));
    FILE* file = fopen(native, "rb");
    if (!file) {
        return nullptr;
    }
    struct stat info;
    unsigned char* bytes = nullptr;
    if (fstat(fileno(file), &info) == 0 && S_ISREG(info.st_mode) && info.st_size < 0xFFFFFFFFll) {
        size_t size = static_cast<size_t>(info.st_size);
        bytes = static_cast<unsigned char*>(malloc(size ? size : 1));
        if (bytes && size && fread(bytes, 1, size, file) != size) {
            free(bytes);
            bytes = nullptr;
        }
        *length = static_cast<unsigned int>(size);
    }
    fclose(file);
    return bytes;
}

int Sys_FileStamp(const char* path, unsigned long long* size, long long* mtime,
                  unsigned long long* identity) {
    char native[1024];
    Sys_ToNativePath(path, native, sizeof(native));
    struct stat info;
    if (stat(native, &info) != 0) {
        return 0;
    }
    if (size) {
        *size = static_cast<unsigned long long>(info.st_size);
    }
    if (mtime) {
        *mtime = static_cast<long long>(info.st_mtim.tv_sec) * 1000000000ll + info.st_mtim.tv_nsec;
    }
    if (identity) {
        *identity = (static_cast<unsigned long long>(info.st_dev) << 40) ^ info.st_ino;
    }
    return 1;
}

int Sys_MakeDirectory(const char* path) {
    char native[1024];
    Sys_ToNativePath(path, native, sizeof(native));
    for (char* p = native + 1; *p; p++) {
        if (*p == '/') {
            *p = 0;
            mkdir(native, 0777);
            *p = '/';
        }
    }
    if (mkdir(native, 0777) != 0 && errno != EEXIST) {
        return 0;
    }
    struct stat info;
    return stat(native, &info) == 0 && S_ISDIR(info.st_mode);
}

long long Sys_FileTimeNow() {
    struct timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<long long>(now.tv_sec) * 1000000000ll + now.tv_nsec;
}
