// The package tool's commands, callable from tests:
//
//   vpk create OUT.vpk [--name T] [--author A] FILE[=ENTRY]...
//   vpk list PKG
//   vpk add PKG FILE[=ENTRY]...
//   vpk remove PKG ENTRY...
//   vpk extract PKG [ENTRY...] [-C DIR]
//
// An entry name defaults to the file's path with '/' turned into '\'. Every
// command either does all it was asked or changes nothing: packages are
// written once, at the end, through a temporary file renamed into place.
#pragma once

#include <cstdio>

// Runs one command line (argv[0] is the program name); returns the exit status:
// 0 on success, 1 when the command failed, 2 on a usage error. Listings go to
// out, messages to err.
int VpkMain(int argc, char** argv, FILE* out, FILE* err);
