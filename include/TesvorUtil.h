// Umbrella header: every public header of TesvorUtil.
#pragma once
#include "TesvorUtilExport.h"
