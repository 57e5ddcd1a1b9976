// afxlite: CFile (grown by the drawing code, which writes and reads files).
#pragma once
