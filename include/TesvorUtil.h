// Umbrella header: every public header of TesvorUtil.
#pragma once
#include "TesvorUtilExport.h"
#include "TesvorFunctions.h"
#include "MCError.h"
#include "MCPictureHolder.h"
