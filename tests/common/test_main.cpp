// Entry point of every test program: COM in a single-threaded apartment (the
// reader's DOM documents and the OLE picture loader need it), then GoogleTest.
#include <gtest/gtest.h>
#include <objbase.h>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    HRESULT hr = ::CoInitializeEx(NULL, COINIT_APARTMENTTHREADED);
    int result = RUN_ALL_TESTS();
    if (SUCCEEDED(hr))
        ::CoUninitialize();
    return result;
}
