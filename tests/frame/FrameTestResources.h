// String resources of frame_tests, shared by the .rc file and the tests.
#pragma once
#define IDS_TEST_DISK_FULL    0x3100
#define IDS_TEST_CHANNEL      0x3101
#define IDS_TEST_MISSING      0x3177  // no module has this string
