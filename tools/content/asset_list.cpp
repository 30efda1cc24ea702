#include "asset_list.h"

#include <strings.h>

void AssetList::Add(const std::string& name, const std::string& package, std::vector<uint8_t> bytes) {
    for (Asset& a : assets) {
        if (strcasecmp(a.name.c_str(), name.c_str()) == 0) {
            a.package = package;
            a.bytes = std::move(bytes);
            return;
        }
    }
    assets.push_back(Asset{name, package, std::move(bytes)});
}

const Asset* AssetList::Find(const std::string& name) const {
    for (const Asset& a : assets) {
        if (strcasecmp(a.name.c_str(), name.c_str()) == 0) {
            return &a;
        }
    }
    return nullptr;
}
