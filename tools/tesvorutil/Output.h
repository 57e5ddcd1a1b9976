// Console output of the tesvorutil program: wide text goes to a console as it
// is and to a pipe or file as UTF-8, so the output reads the same either way.
#pragma once

namespace tesvorutil {

void WriteOut(const wchar_t* text);
void WriteErr(const wchar_t* text);

// Formatted with the framework's CString::Format rules (%s is a wide string).
void PrintOut(const wchar_t* format, ...);
void PrintErr(const wchar_t* format, ...);

}  // namespace tesvorutil
