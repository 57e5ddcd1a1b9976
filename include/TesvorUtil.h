// Umbrella header: every public header of TesvorUtil.
#pragma once
#include "TesvorUtilExport.h"
#include "TesvorFunctions.h"
#include "MCError.h"
#include "MCVLRException.h"
#include "MErrorUtils.h"
#include "MCEmailAddressChecker.h"
#include "MCUserNames.h"
#include "MNOwnerUtils.h"
#include "MCPictureHolder.h"
