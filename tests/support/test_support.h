// Helpers shared by every test binary: scratch directories and file access.
#pragma once

#include <string>
#include <vector>

namespace test {

// Creates a fresh empty directory under the build tree and returns its path.
std::string ScratchDir(const char* name);

// Reads a whole file; an empty vector when it cannot be read.
std::vector<unsigned char> ReadFile(const std::string& path);

// Writes bytes to a file, creating or replacing it; true on success.
bool WriteFile(const std::string& path, const void* data, size_t length);

// Writes a string to a file; true on success.
bool WriteText(const std::string& path, const std::string& text);

}  // namespace test
