// afxlite: windows and controls (grown by the drawing and window code).
#pragma once
