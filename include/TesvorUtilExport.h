// The export macro of TesvorUtil.dll: every exported class, function and
// constant of the library is declared with TESVORUTIL_API.
#pragma once

#if defined(TESVORUTIL_BUILD)
#define TESVORUTIL_API __declspec(dllexport)
#else
#define TESVORUTIL_API __declspec(dllimport)
#endif
