// A DLL with a version resource but no translation table.
extern "C" __declspec(dllexport) void D() {}
