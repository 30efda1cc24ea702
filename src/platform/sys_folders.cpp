#include "platform/sys_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/sys_files.h"

// Where the install puts the data, relative to the executable's folder's parent: the
// Debian games layout this project installs, then the plain one other distributions use.
static const char* const kDataBesideExecutable[kSysDataCandidates] = {"share/games/vantle2/data",
                                                                      "share/vantle2/data"};

static int IsAbsolute(const char* path) {
    return path && path[0] == '/';
}

int Sys_PlayerFolderFor(const char* xdgDataHome, const char* homeVariable, const char* accountHome, char* out,
                        int outSize) {
    int length = -1;
    if (IsAbsolute(xdgDataHome)) {
        length = snprintf(out, outSize, "%s/vantle2", xdgDataHome);
    } else if (IsAbsolute(homeVariable) || IsAbsolute(accountHome)) {
        const char* home = IsAbsolute(homeVariable) ? homeVariable : accountHome;
        length = snprintf(out, outSize, "%s/.local/share/vantle2", home);
    }
    if (length < 0 || length >= outSize) {
        out[0] = 0;
        return 0;
    }
    return 1;
}

// The folder holding the running executable, without its trailing slash.
static int ExecutableFolder(char* out, int outSize) {
    ssize_t length = readlink("/proc/self/exe", out, outSize - 1);
    if (length <= 0) {
        return 0;
    }
    out[length] = 0;
    char* slash = strrchr(out, '/');
    if (!slash) {
        return 0;
    }
    *slash = 0;
    return 1;
}

static int CountPackage(const char*, void* context) {
    ++*static_cast<int*>(context);
    return 0;
}

static int HoldsPackages(const char* folder) {
    int packages = 0;
    Sys_ListFiles(folder, ".vpk", CountPackage, &packages);
    return packages > 0;
}

static void FindPlayerFolder(SysFolders* folders) {
    const struct passwd* account = getpwuid(getuid());
    Sys_PlayerFolderFor(getenv("XDG_DATA_HOME"), getenv("HOME"), account ? account->pw_dir : nullptr,
                        folders->player, kSysPathSize);
}

int Sys_FindFolders(SysFolders* folders) {
    memset(folders, 0, sizeof(*folders));
    char executable[kSysPathSize];
    if (!ExecutableFolder(executable, sizeof(executable))) {
        return folders->layout = SysLayoutTree;
    }
    char* name = strrchr(executable, '/');
    int inGamesFolder = name && strcmp(name + 1, "games") == 0;
    if (name) {
        *name = 0;  // the prefix: the executable folder's parent
    }
    int found = -1;
    int layoutSeen = inGamesFolder;
    for (int i = 0; i < kSysDataCandidates; i++) {
        int length =
            snprintf(folders->searched[i], kSysPathSize, "%s/%s", executable, kDataBesideExecutable[i]);
        if (found < 0 && length < kSysPathSize && HoldsPackages(folders->searched[i])) {
            found = i;
            layoutSeen = 1;
        }
    }
    if (!layoutSeen) {
        memset(folders->searched, 0, sizeof(folders->searched));
        return folders->layout = SysLayoutTree;
    }
    FindPlayerFolder(folders);
    if (found < 0) {
        return folders->layout = SysLayoutNoData;
    }
    snprintf(folders->installedData, kSysPathSize, "%s", folders->searched[found]);
    return folders->layout = SysLayoutInstalled;
}

int Sys_EnterPlayerFolder(SysFolders* folders) {
    if (folders->player[0] && Sys_MakeDirectory(folders->player) && chdir(folders->player) == 0) {
        return 1;
    }
    folders->player[0] = 0;
    // The installed data's parent holds nothing the game reads by name, and is not the player's
    // to write to; "/" is the last resort.
    char parent[kSysPathSize];
    snprintf(parent, sizeof(parent), "%s", folders->installedData);
    char* slash = strrchr(parent, '/');
    if (slash && slash != parent) {
        *slash = 0;
    }
    if (chdir(parent) != 0 && chdir("/") != 0) {
        folders->installedData[0] = 0;  // nowhere to stand: the caller cannot go on
    }
    return 0;
}
