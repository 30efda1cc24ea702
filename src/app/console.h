// The console: the program-wide log every subsystem prints to, and the command
// interpreter that the input line, the developer menu, the start-up scripts and
// the configuration file all speak through. One global instance, g_console.
//
// The log keeps 256 lines of at most 83 characters; lines[0] is the newest.
// Texts are Windows-1252 bytes.
#pragma once

class Console {
public:
    static const int kLineCount = 256;
    static const int kLineWidth = 83;

    unsigned char visible;           // 0 closed, 1 open
    float slide;                     // panel offset: -240 closed, 0 open
    char inputLine[256];             // the line being typed
    char historyLine[256];           // the last line executed from the input line
    char lines[kLineCount][256];     // the log, newest first

    Console();

    // Appends a finished line, cut into pieces of 83 characters; ignores null and texts over 256.
    void AddLine(const char* text);
    // Formats printf-style into a 4096-byte buffer and appends the result as AddLine does.
    void Print(const char* format, ...) __attribute__((format(printf, 2, 3)));
    // Empties the log and the input line ("CLS").
    void Clear();
};

extern Console g_console;

// Interprets one command line (case-insensitive command word, usage lines on missing arguments).
void ExecuteCommand(const char* line);
// Runs a command script from the working directory, skipping firstLine lines; silent when missing.
void RunScript(const char* path, int firstLine);

// When set, every finished console line is also written here (the program sets stdout).
void Console_SetEcho(void (*echo)(const char* line));
