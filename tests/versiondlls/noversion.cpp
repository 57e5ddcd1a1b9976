// A DLL without a version resource.
extern "C" __declspec(dllexport) int TesvorNoVersionMarker() { return 1; }
