// afxlite: graphics objects and device contexts (grown by the drawing code).
#pragma once
