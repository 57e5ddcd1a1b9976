// MEEnumeratingAction: what a window-tree callback asks the walk to do next.
#pragma once

enum MEEnumeratingAction {
    EnumActionAbort = 0,     // stop, and mark the walk aborted
    EnumActionContinue = 2,  // go on; any other value stops without marking
};
