#include "content_build.h"

#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

#include "character_models.h"
#include "image.h"
#include "interface_textures.h"
#include "level_compiler.h"
#include "level_textures.h"
#include "music_assets.h"
#include "platform/sys_files.h"
#include "prop_models.h"
#include "resources/package.h"
#include "sound_effects.h"
#include "title_models.h"

bool BuildContent(const ContentOptions& options, AssetList* list, std::string* error) {
    if (!GenerateFonts(list, options.fontDirectory, error) ||
        !GenerateInterfaceTextures(list, options.fontDirectory, error)) {
        return false;
    }
    GenerateEffectTextures(list);
    GenerateFlareList(list);
    if (!GenerateCharacters(list, error) || !GenerateProps(list, error) ||
        !GenerateTitleModels(list, options.fontDirectory, error)) {
        return false;
    }
    GenerateLevelTextures(list);
    GenerateSoundEffects(list);
    // Levels last: the compiler checks every texture name against what is made above.
    return GenerateMusic(list, options.contentDirectory, error) &&
           GenerateLevels(list, options.contentDirectory, options.bake, error);
}

bool WritePackages(const AssetList& list, const std::string& dataDirectory, std::string* error) {
    // A build whose data folder was deleted makes it again rather than failing.
    std::error_code made;
    std::filesystem::create_directories(dataDirectory, made);
    if (made) {
        *error = dataDirectory + ": cannot make the folder (" + made.message() + ")";
        return false;
    }
    std::vector<std::string> names;
    for (const Asset& a : list.assets) {
        bool seen = false;
        for (const std::string& n : names) {
            seen = seen || n == a.package;
        }
        if (!seen) {
            names.push_back(a.package);
        }
    }
    for (const std::string& packageName : names) {
        std::unique_ptr<Package> package(new Package());
        strncpy(package->name, "Vantle 2 content", sizeof(package->name) - 1);
        strncpy(package->author, "vantle-content", sizeof(package->author) - 1);
        for (const Asset& a : list.assets) {
            if (a.package != packageName) {
                continue;
            }
            if (!package->AddData(a.name.c_str(), a.bytes.data(),
                                  static_cast<unsigned int>(a.bytes.size()))) {
                *error = packageName + ": cannot add " + a.name;
                return false;
            }
        }
        std::string path = dataDirectory + "/" + packageName;
        if (!package->Save(path.c_str())) {
            *error = path + ": cannot write";
            return false;
        }
    }
    return true;
}

bool WriteDesktopIcons(const std::string& fontDirectory, const std::string& directory, std::string* error) {
    for (int size : {48, 128, 256}) {
        Image badge;
        if (!DrawBadge(fontDirectory, size, &badge, error)) {
            return false;
        }
        std::string folder =
            directory + "/hicolor/" + std::to_string(size) + "x" + std::to_string(size) + "/apps";
        std::vector<uint8_t> png = EncodePng(badge);
        std::string path = folder + "/vantle2.png";
        if (!Sys_MakeDirectory(folder.c_str()) ||
            !Sys_WriteFileAtomic(path.c_str(), png.data(), static_cast<unsigned int>(png.size()))) {
            *error = path + ": cannot write";
            return false;
        }
    }
    return true;
}
