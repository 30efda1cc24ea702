// File-system services of the platform layer: directory listing in the order
// the operating system yields it, and the Windows-style path conversion.
#pragma once

// Lists the files of directory whose names end in extension (for example ".vpk"),
// compared without regard to case, in the order the directory yields them.
// Calls visit(name, context) for each; stops early when visit returns 0.
// Returns 0 when the directory cannot be opened, else 1.
int Sys_ListFiles(const char* directory, const char* extension, int (*visit)(const char* name, void* context),
                  void* context);

// Copies a resource path into out (size outSize) with every backslash turned into '/'.
void Sys_ToNativePath(const char* path, char* out, int outSize);

// Replaces the file at path with the bytes given: they are written to a temporary file in
// the same directory and renamed into place, so an interrupted write never destroys the
// old file. Returns 1 on success, 0 when nothing was replaced.
int Sys_WriteFileAtomic(const char* path, const void* data, unsigned int length);

// Why the last Sys_WriteFileAtomic that failed failed, in the system's words.
const char* Sys_WriteErrorText();

// Reads a whole file into a fresh malloc'd block (the caller frees it) and sets *length;
// null when the file cannot be opened or read, or is 4 GiB or larger.
unsigned char* Sys_ReadWholeFile(const char* path, unsigned int* length);

// Reports a file's size, its modification time in nanoseconds and an identity that
// changes when the file is replaced (the inode); 1, or 0 when there is no such file.
// Any out pointer may be null.
int Sys_FileStamp(const char* path, unsigned long long* size, long long* mtime, unsigned long long* identity);

// Creates the directory and any missing parents; 1 when it exists afterwards.
int Sys_MakeDirectory(const char* path);

// The wall-clock time in nanoseconds on the same scale as Sys_FileStamp's mtime.
long long Sys_FileTimeNow();
