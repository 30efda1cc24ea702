#include "platform/sys_stderr.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

int Sys_MuteStderr() {
    fflush(stderr);
    int saved = dup(STDERR_FILENO);
    if (saved < 0) {
        return -1;
    }
    int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (null < 0) {
        close(saved);
        return -1;
    }
    dup2(null, STDERR_FILENO);
    close(null);
    return saved;
}

void Sys_RestoreStderr(int saved) {
    if (saved < 0) {
        return;
    }
    fflush(stderr);
    dup2(saved, STDERR_FILENO);
    close(saved);
}
