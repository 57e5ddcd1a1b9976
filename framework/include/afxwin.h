// afxlite: windows, graphics and application support of the framework subset.
#pragma once
#include "afx.h"
#include "afxlite_types.h"
#include "afxlite_cmdtarget.h"
#include "afxlite_module.h"
#include "afxlite_gdi.h"
#include "afxlite_wnd.h"
#include "afxlite_ctrl.h"
