// afxlite: CFileFind (grown by the file helpers).
#pragma once
