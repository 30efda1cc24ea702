#include "vpk_commands.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "platform/sys_files.h"
#include "resources/package.h"

static const char* kUsage =
    "usage: vpk create OUT.vpk [--name T] [--author A] FILE[=ENTRY]...\n"
    "       vpk list PKG\n"
    "       vpk add PKG FILE[=ENTRY]...\n"
    "       vpk remove PKG ENTRY...\n"
    "       vpk extract PKG [ENTRY...] [-C DIR]\n";

struct VpkContext {
    FILE* out;
    FILE* err;
};

static int Usage(const VpkContext& vpk) {
    fputs(kUsage, vpk.err);
    return 2;
}

// Loads a package with a message that says why it could not be.
static int LoadPackage(const VpkContext& vpk, Package* package, const char* path) {
    unsigned int length;
    unsigned char* bytes = Sys_ReadWholeFile(path, &length);
    if (!bytes) {
        fprintf(vpk.err, "vpk: cannot read '%s'\n", path);
        return 0;
    }
    int ok = package->LoadFromMemory(bytes, length);
    if (!ok) {
        if (length < 4 || memcmp(bytes, "VPKG", 4) != 0) {
            fprintf(vpk.err, "vpk: '%s' is not a package (bad magic)\n", path);
        } else {
            fprintf(vpk.err, "vpk: '%s' is damaged (its directory or data does not fit the file)\n", path);
        }
    }
    free(bytes);
    return ok;
}

static int SavePackage(const VpkContext& vpk, const Package& package, const char* path) {
    if (!package.Save(path)) {
        fprintf(vpk.err, "vpk: cannot write '%s'\n", path);
        return 0;
    }
    return 1;
}

// "FILE" or "FILE=ENTRY" into the source path and the entry name.
static void SplitFileArgument(const char* argument, std::string* file, std::string* entry) {
    const char* equals = strchr(argument, '=');
    if (equals) {
        file->assign(argument, equals - argument);
        entry->assign(equals + 1);
        return;
    }
    file->assign(argument);
    *entry = *file;
    for (char& c : *entry) {
        if (c == '/') {
            c = '\\';
        }
    }
}

static int AddFiles(const VpkContext& vpk, Package* package, const std::vector<const char*>& arguments) {
    for (const char* argument : arguments) {
        std::string file, entry;
        SplitFileArgument(argument, &file, &entry);
        if (entry.empty() || entry.size() >= kPackageNameSize) {
            fprintf(vpk.err, "vpk: entry name '%s' must be 1 to %u characters\n", entry.c_str(),
                    kPackageNameSize - 1);
            return 0;
        }
        unsigned int length;
        unsigned char* bytes = Sys_ReadWholeFile(file.c_str(), &length);
        if (!bytes) {
            fprintf(vpk.err, "vpk: cannot read '%s'\n", file.c_str());
            return 0;
        }
        int ok = package->AddData(entry.c_str(), bytes, length);
        free(bytes);
        if (!ok) {
            fprintf(vpk.err, "vpk: package is full (%u entries); cannot add '%s'\n", kMaxPackageEntries,
                    entry.c_str());
            return 0;
        }
    }
    return 1;
}

static int SetTitle(const VpkContext& vpk, char* field, const char* what, const char* value) {
    if (strlen(value) >= kPackageTitleSize) {
        fprintf(vpk.err, "vpk: %s '%s' is longer than %u characters\n", what, value, kPackageTitleSize - 1);
        return 0;
    }
    memset(field, 0, kPackageTitleSize);
    strcpy(field, value);
    return 1;
}

static int Create(const VpkContext& vpk, int argc, char** argv) {
    if (argc < 1) {
        return Usage(vpk);
    }
    std::unique_ptr<Package> package(new Package);
    std::vector<const char*> files;
    for (int i = 1; i < argc; i++) {
        int isName = !strcmp(argv[i], "--name"), isAuthor = !strcmp(argv[i], "--author");
        if (isName || isAuthor) {
            if (i + 1 >= argc) {
                return Usage(vpk);
            }
            if (!SetTitle(vpk, isName ? package->name : package->author, isName ? "name" : "author",
                          argv[++i])) {
                return 1;
            }
        } else {
            files.push_back(argv[i]);
        }
    }
    if (!AddFiles(vpk, package.get(), files) || !SavePackage(vpk, *package, argv[0])) {
        return 1;
    }
    return 0;
}

static int List(const VpkContext& vpk, int argc, char** argv) {
    if (argc != 1) {
        return Usage(vpk);
    }
    std::unique_ptr<Package> package(new Package);
    if (!LoadPackage(vpk, package.get(), argv[0])) {
        return 1;
    }
    fprintf(vpk.out, "name: %s\nauthor: %s\nversion: %u\nentries: %u\n", package->name, package->author,
            package->version, package->count);
    for (unsigned int i = 0; i < package->count; i++) {
        fprintf(vpk.out, "%10u  %s\n", package->entries[i].size, package->entries[i].name);
    }
    return 0;
}

static int Add(const VpkContext& vpk, int argc, char** argv) {
    if (argc < 2) {
        return Usage(vpk);
    }
    std::unique_ptr<Package> package(new Package);
    std::vector<const char*> files(argv + 1, argv + argc);
    if (!LoadPackage(vpk, package.get(), argv[0]) || !AddFiles(vpk, package.get(), files) ||
        !SavePackage(vpk, *package, argv[0])) {
        return 1;
    }
    return 0;
}

static int Remove(const VpkContext& vpk, int argc, char** argv) {
    if (argc < 2) {
        return Usage(vpk);
    }
    std::unique_ptr<Package> package(new Package);
    if (!LoadPackage(vpk, package.get(), argv[0])) {
        return 1;
    }
    for (int i = 1; i < argc; i++) {
        if (!package->RemoveFile(argv[i])) {
            fprintf(vpk.err, "vpk: no entry '%s' in '%s'\n", argv[i], argv[0]);
            return 1;
        }
    }
    return SavePackage(vpk, *package, argv[0]) ? 0 : 1;
}

// An entry name is written below the target directory only when it cannot climb
// out of it: no absolute path, no ".." component, no empty component.
static int SafeEntryPath(const char* entry, std::string* relative) {
    relative->clear();
    if (!entry[0] || entry[0] == '\\' || entry[0] == '/') {
        return 0;
    }
    const char* part = entry;
    for (const char* p = entry;; p++) {
        if (*p == '\\' || *p == '/' || !*p) {
            std::string component(part, p - part);
            if (component.empty() || component == "..") {
                return 0;
            }
            if (component != ".") {
                *relative += (relative->empty() ? "" : "/") + component;
            }
            if (!*p) {
                break;
            }
            part = p + 1;
        }
    }
    return !relative->empty();
}

static int ExtractEntry(const VpkContext& vpk, const Package& package, unsigned int index, const char* dir) {
    std::string relative;
    if (!SafeEntryPath(package.entries[index].name, &relative)) {
        fprintf(vpk.err, "vpk: refusing to extract '%s' (not a relative path)\n",
                package.entries[index].name);
        return 0;
    }
    std::string path = std::string(dir) + "/" + relative;
    size_t slash = path.rfind('/');
    if (!Sys_MakeDirectory(path.substr(0, slash).c_str())) {
        fprintf(vpk.err, "vpk: cannot create the directory for '%s'\n", path.c_str());
        return 0;
    }
    if (!Sys_WriteFileAtomic(path.c_str(), package.data[index], package.entries[index].size)) {
        fprintf(vpk.err, "vpk: cannot write '%s'\n", path.c_str());
        return 0;
    }
    fprintf(vpk.out, "%s\n", path.c_str());
    return 1;
}

static int Extract(const VpkContext& vpk, int argc, char** argv) {
    if (argc < 1) {
        return Usage(vpk);
    }
    const char* dir = ".";
    std::vector<const char*> names;
    for (int i = 1; i < argc; i++) {
        if (!strcmp(argv[i], "-C")) {
            if (i + 1 >= argc) {
                return Usage(vpk);
            }
            dir = argv[++i];
        } else {
            names.push_back(argv[i]);
        }
    }
    std::unique_ptr<Package> package(new Package);
    if (!LoadPackage(vpk, package.get(), argv[0])) {
        return 1;
    }
    std::vector<unsigned int> chosen;
    for (const char* name : names) {
        int index = package->FindEntry(name);
        if (index < 0) {
            fprintf(vpk.err, "vpk: no entry '%s' in '%s'\n", name, argv[0]);
            return 1;
        }
        chosen.push_back(static_cast<unsigned int>(index));
    }
    if (names.empty()) {
        for (unsigned int i = 0; i < package->count; i++) {
            chosen.push_back(i);
        }
    }
    for (unsigned int index : chosen) {
        if (!ExtractEntry(vpk, *package, index, dir)) {
            return 1;
        }
    }
    return 0;
}

int VpkMain(int argc, char** argv, FILE* out, FILE* err) {
    VpkContext vpk = {out, err};
    if (argc < 2) {
        return Usage(vpk);
    }
    const char* command = argv[1];
    int rest = argc - 2;
    char** args = argv + 2;
    if (!strcmp(command, "create")) {
        return Create(vpk, rest, args);
    }
    if (!strcmp(command, "list")) {
        return List(vpk, rest, args);
    }
    if (!strcmp(command, "add")) {
        return Add(vpk, rest, args);
    }
    if (!strcmp(command, "remove")) {
        return Remove(vpk, rest, args);
    }
    if (!strcmp(command, "extract")) {
        return Extract(vpk, rest, args);
    }
    fprintf(err, "vpk: unknown command '%s'\n", command);
    return Usage(vpk);
}
