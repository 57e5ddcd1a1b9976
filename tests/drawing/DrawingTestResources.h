// Resource identifiers of the drawing test program.
#pragma once
#define IDR_PICTURE_GIF 101
#define IDR_PICTURE_BMP 102
#define IDR_EMPTY_DATA 103
#define IDB_STRIP 104
