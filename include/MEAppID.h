// MEAppID: the programs of the family that guard their start.
#pragma once

enum MEAppID {
    AppIDMain = 0,
    AppIDInstaller = 1,
    AppIDUninstaller = 2,
    AppIDNone = 3  // only the default of a check result
};
