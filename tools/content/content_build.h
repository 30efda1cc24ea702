// The content build: makes every asset the game names and writes them into
// packages. Generation runs in stages (fonts and pictures, sounds, music,
// models, scenes and levels with their baked lightmaps); each stage adds to
// one AssetList, and the packages are written from it at the end in the
// order assets were added, so two builds give byte-identical packages.
#pragma once

#include <string>

#include "asset_list.h"

struct ContentOptions {
    std::string contentDirectory;  // the repository's content/ (scores, level sources)
    std::string fontDirectory;     // where the DejaVu TrueType files are
    bool bake;                     // bake lightmaps into the locations (off for quick tests)
};

// Where fonts-dejavu-core installs its faces.
#define CONTENT_DEFAULT_FONT_DIRECTORY "/usr/share/fonts/truetype/dejavu"

// Generates everything; false with a message (naming the file and line for source errors).
bool BuildContent(const ContentOptions& options, AssetList* list, std::string* error);
// Writes one .vpk per package name into dataDirectory; false with a message on failure.
bool WritePackages(const AssetList& list, const std::string& dataDirectory, std::string* error);
// Writes the desktop's icons, the engine's badge as PNG files, into
// directory/hicolor/<n>x<n>/apps/vantle2.png for n = 48, 128, 256; false with a message.
bool WriteDesktopIcons(const std::string& fontDirectory, const std::string& directory, std::string* error);
