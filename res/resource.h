#pragma once
// String resources of TesvorUtil.dll. The identifiers sit in a range of their
// own so that they do not collide with an application's strings on the module chain.
#define IDS_TESVORUTIL_LIBRARY_NAME   0x7E00
