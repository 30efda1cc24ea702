// Where the program finds its data and keeps each player's files.
//
// The program built in the tree works in its working directory, as the game
// always has: data/, config.vbt, autoexec.vbt and recordings all sit there,
// so build/run, or a modder's folder of their own, keeps working unchanged.
//
// The installed program is known by where it stands: in a folder named games
// (<prefix>/games/vantle2), or with packages in share/games/vantle2/data (or
// share/vantle2/data) under its folder's parent. It never reads or writes the
// working directory, whatever that holds; an installed program whose data is
// gone stops rather than fall back on it. It moves
// into the player's folder, $XDG_DATA_HOME/vantle2 (by the XDG rules,
// ~/.local/share/vantle2 by default), which holds everything the game writes,
// and whose own data/ is searched before the installed data (see
// resource_manager.h for the order). Being found relative to the executable,
// the installed data works under any prefix, and in a package unpacked
// anywhere.
#pragma once

enum { kSysPathSize = 1024, kSysDataCandidates = 2 };

enum SysLayout {
    SysLayoutTree = 0,       // the working directory holds everything
    SysLayoutInstalled = 1,  // installed data beside the executable, files in the player's folder
    SysLayoutNoData = 2      // an installed executable whose data is nowhere to be found
};

struct SysFolders {
    int layout;                                       // SysLayout
    char installedData[kSysPathSize];                 // the installed data folder, "" in the tree
    char player[kSysPathSize];                        // the player's folder, "" when there is none
    char searched[kSysDataCandidates][kSysPathSize];  // where installed data was looked for
};

// The player's folder by the XDG rules: xdgDataHome/vantle2 when that is absolute, else
// home/.local/share/vantle2 with home the first absolute one of homeVariable and
// accountHome. Any of them may be null. 1, or 0 with out "" when none is absolute.
int Sys_PlayerFolderFor(const char* xdgDataHome, const char* homeVariable, const char* accountHome, char* out,
                        int outSize);

// Decides the layout from where the running executable lives and fills folders.
// Nothing is written or created.
int Sys_FindFolders(SysFolders* folders);

// The installed program's move into the player's folder: makes it (with its parents)
// and enters it. When it cannot be made, enters the installed data's parent instead,
// so that nothing is ever read from or written to the folder the program was started
// in, and clears folders->player. 1 when the player's folder is in use.
int Sys_EnterPlayerFolder(SysFolders* folders);
