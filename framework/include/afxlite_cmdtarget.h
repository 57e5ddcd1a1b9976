// afxlite: CCmdTarget, the base of windows, applications and automation objects.
#pragma once
#include "afx.h"

class AFXLITE_API CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)
public:
    CCmdTarget();
    ~CCmdTarget() override;
};
