// The generated content before it is written: every asset's resource name
// (backslash-separated, as the game asks for it), the package it goes into and
// its bytes. Generators add to one list; the writer stages and packs it. The
// list keeps the order in which assets were added, which is the order of the
// package directories, so a build is reproducible byte for byte.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct Asset {
    std::string name;     // resource name, e.g. "sound\\jump01.wav"
    std::string package;  // package file it belongs to, e.g. "base.vpk"
    std::vector<uint8_t> bytes;
};

class AssetList {
public:
    std::vector<Asset> assets;

    // Adds (or replaces, keeping its place) the asset of that name.
    void Add(const std::string& name, const std::string& package, std::vector<uint8_t> bytes);
    // The asset of that name (compared without regard to ASCII case), or null.
    const Asset* Find(const std::string& name) const;
};

// Package names used by the content build.
#define CONTENT_BASE_PACKAGE "base.vpk"
#define CONTENT_LEVELS_PACKAGE "levels.vpk"
