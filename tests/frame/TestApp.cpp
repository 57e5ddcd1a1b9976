#include "TestApp.h"

namespace {
TestApp theApp;
}

TestApp& TheTestApp() { return theApp; }
