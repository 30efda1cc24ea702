#include "test_support.h"

#include <cstdio>
#include <filesystem>

namespace test {

std::string ScratchDir(const char* name) {
    std::filesystem::path dir = std::filesystem::path(VANTLE_BINARY_DIR) / "test-scratch" / name;
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
    std::filesystem::create_directories(dir);
    return dir.string();
}

std::vector<unsigned char> ReadFile(const std::string& path) {
    std::vector<unsigned char> bytes;
    FILE* file = fopen(path.c_str(), "rb");
    if (!file) {
        return bytes;
    }
    unsigned char chunk[65536];
    size_t got;
    while ((got = fread(chunk, 1, sizeof(chunk), file)) > 0) {
        bytes.insert(bytes.end(), chunk, chunk + got);
    }
    fclose(file);
    return bytes;
}

bool WriteFile(const std::string& path, const void* data, size_t length) {
    FILE* file = fopen(path.c_str(), "wb");
    if (!file) {
        return false;
    }
    bool ok = fwrite(data, 1, length, file) == length;
    return fclose(file) == 0 && ok;
}

bool WriteText(const std::string& path, const std::string& text) {
    return WriteFile(path, text.data(), text.size());
}

}  // namespace test
