// Package directories: the builder's strict loader, and the lookup's two
// directory readers (in memory and record by record from a file), which must
// agree on every name.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "fuzz_seeds.h"
#include "resources/package.h"
#include "resources/package_directory.h"

static void CheckLoader(const uint8_t* data, size_t size) {
    static Package* package = new Package;
    if (!package->LoadFromMemory(data, static_cast<unsigned int>(size))) {
        return;
    }
    // What loaded must serialise back to the same directory and data.
    unsigned long long length = package->Size();
    if (length > size) {
        abort();
    }
    unsigned char* out = static_cast<unsigned char*>(malloc(length));
    package->Serialise(out);
    if (memcmp(out + 68, data + 68, length - 68) != 0) {
        abort();
    }
    free(out);
}

static void CheckName(const PackageDirectory& directory, FILE* file, size_t size, const char* name) {
    unsigned long long offsetA = 0, offsetB = 0;
    unsigned int sizeA = 0, sizeB = 0;
    int a = directory.Find(name, &offsetA, &sizeA);
    int b = file ? PackageWalkFile(file, size, name, &offsetB, &sizeB) : 0;
    if (a != b || (a && (offsetA != offsetB || sizeA != sizeB || offsetA + sizeA > size))) {
        abort();
    }
}

static void CheckLookup(const uint8_t* data, size_t size) {
    PackageDirectory directory;
    if (!directory.Parse(data, static_cast<unsigned int>(size), size)) {
        return;
    }
    FILE* file = size ? fmemopen(const_cast<uint8_t*>(data), size, "rb") : nullptr;
    for (unsigned int i = 0; i < directory.count && i < 64; i++) {
        char name[128];
        memcpy(name, directory.entries[i].name, sizeof(name));
        CheckName(directory, file, size, name);
        for (char* p = name; *p; p++) {
            *p = (*p >= 'a' && *p <= 'z') ? *p - 32 : *p;
        }
        CheckName(directory, file, size, name);
    }
    CheckName(directory, file, size, "levels\\01.vlc");
    CheckName(directory, file, size, "");
    if (file) {
        fclose(file);
    }
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    CheckLoader(data, size);
    CheckLookup(data, size);
    return 0;
}

void VantleFuzzSeeds(FuzzSeedList& seeds) {
    std::unique_ptr<Package> package(new Package);
    for (int round = 0; round < 3; round++) {
        if (round == 1) {
            package->AddData("levels\\01.vlc", "VLOC level bytes", 16);
            package->AddData("empty", "", 0);
            package->AddData("Textures\\A.TGA", "tga", 3);
        }
        if (round == 2) {
            package->AddData("LEVELS\\01.VLC", "replaced", 8);
            package->AddData("levels\\02.vlc", "another", 7);
        }
        unsigned long long length = package->Size();
        std::vector<uint8_t> bytes(length);
        package->Serialise(bytes.data());
        AddSeed(seeds, bytes.data(), bytes.size());
    }
}
