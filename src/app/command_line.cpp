#include "app/command_line.h"

#include <cstring>

StartCommands g_startCommands;

static const char* const kUsage =
    "usage: vantle2 [--help | --version | +COMMAND [ARGS...]...]\n"
    "\n"
    "  --help      show this text and exit\n"
    "  --version   show the version and exit\n"
    "  +COMMAND    run a console command once autoexec.vbt has run; the words up to\n"
    "              the next +COMMAND are its arguments, for example\n"
    "              vantle2 +VID_SIZE 1024,768 +DEMO_PLAY ~/run.replay\n"
    "\n"
    "The installed game keeps config.vbt, autoexec.vbt, recordings and a data/\n"
    "folder for add-ons in $XDG_DATA_HOME/vantle2 (~/.local/share/vantle2); the\n"
    "game built in its source tree uses the folder it is started in.\n";

const char* CommandLineUsage() {
    return kUsage;
}

// Appends word to line with a blank before it unless the line is empty; 0 when it does not fit.
static int AppendWord(char* line, const char* word) {
    size_t used = strlen(line);
    size_t needed = used + (used ? 1 : 0) + strlen(word);
    if (needed >= sizeof(StartCommands::lines[0])) {
        return 0;
    }
    if (used) {
        line[used++] = ' ';
    }
    strcpy(line + used, word);
    return 1;
}

int ParseCommandLine(int argc, const char* const* argv, StartCommands* commands) {
    commands->count = 0;
    if (argc == 2 && strcmp(argv[1], "--help") == 0) {
        return CommandLineHelp;
    }
    if (argc == 2 && strcmp(argv[1], "--version") == 0) {
        return CommandLineVersion;
    }
    for (int i = 1; i < argc; i++) {
        const char* word = argv[i];
        if (word[0] == '+') {
            if (!word[1] || commands->count == StartCommands::kMaxLines) {
                return CommandLineBad;
            }
            commands->lines[commands->count++][0] = 0;
            word++;
        } else if (commands->count == 0) {
            return CommandLineBad;  // arguments before any command
        }
        if (!AppendWord(commands->lines[commands->count - 1], word)) {
            return CommandLineBad;
        }
    }
    return CommandLineRun;
}
