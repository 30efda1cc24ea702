// The program's command line, read the way the Quake ports read theirs:
// "--help", "--version", or words "+COMMAND ARGS..." that each become one
// console line, run once autoexec.vbt has run, so a line given at start-up
// works exactly as it would in that script. No arguments: nothing changes.
#pragma once

enum CommandLineAction { CommandLineRun = 0, CommandLineHelp, CommandLineVersion, CommandLineBad };

struct StartCommands {
    static const int kMaxLines = 32;
    int count;
    char lines[kMaxLines][256];
};

// Reads argv[1..argc-1] into commands; returns the CommandLineAction. Anything but a lone
// --help or --version, or +words with their arguments (each line under 256 characters,
// at most 32), is CommandLineBad.
int ParseCommandLine(int argc, const char* const* argv, StartCommands* commands);

// The usage text, ending in a newline.
const char* CommandLineUsage();

// The lines the program was started with; run by start-up after autoexec.vbt.
extern StartCommands g_startCommands;
