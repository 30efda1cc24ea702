// File-system services of the platform layer: directory listing in the order
// the operating system yields it, and the Windows-style path conversion.
#pragma once

// Lists the files of directory whose names end in extension (for example ".vpk"),
// compared without regard to case, in the order the directory yields them.
// Calls visit(name, context) for each; stops early when visit returns 0.
// Returns 0 when the directory cannot be opened, else 1.
int Sys_ListFiles(const char* directory, const char* extension,
                  int (*visit)(const char* name, void* context), void* context);

// Copies a resource path into out (size outSize) with every backslash turned into '/'.
void Sys_ToNativePath(const char* path, char* out, int outSize);

// Replaces the file at path with the bytes given: they are written to a temporary file in
// the same directory and renamed into place, so an interrupted write never destroys the
// old file. Returns 1 on success, 0 when nothing was replaced.
int Sys_WriteFileAtomic(const char* path, const void* data, unsigned int length);
