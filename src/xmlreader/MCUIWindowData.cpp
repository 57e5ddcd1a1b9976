#include "MCUIWindowData.h"

MCUIWindowData::MCUIWindowData()
    : eMoveType(static_cast<MEWindowMoveType>(1)), eResizeType(static_cast<MEControlResizeType>(1))
{
}

MCUIWindowData::MCUIWindowData(const MCUIWindowData& other)
    : MCUIDataControl(other), strSkinForm(other.strSkinForm), eMoveType(other.eMoveType),
      eResizeType(other.eResizeType), footer(other.footer)
{
    arrControls.SetSize(0, other.arrControls.GetSize());
    for (INT_PTR i = 0; i < other.arrControls.GetSize(); ++i)
        arrControls.Add(new MCUIDataControl(*other.arrControls[i]));
}

MCUIWindowData& MCUIWindowData::operator=(const MCUIWindowData& other)
{
    if (this != &other) {
        MCUIWindowData copy(other);
        RemoveAllControls();
        MCUIDataControl::operator=(copy);
        // The copy's records change hands; its array is emptied so that they are
        // deleted once, by this record.
        for (INT_PTR i = 0; i < copy.arrControls.GetSize(); ++i)
            arrControls.Add(copy.arrControls[i]);
        copy.arrControls.RemoveAll();
        strSkinForm = copy.strSkinForm;
        eMoveType = copy.eMoveType;
        eResizeType = copy.eResizeType;
        footer = copy.footer;
    }
    return *this;
}

MCUIWindowData::~MCUIWindowData()
{
    RemoveAllControls();
}

void MCUIWindowData::RemoveAllControls()
{
    for (INT_PTR i = 0; i < arrControls.GetSize(); ++i)
        delete arrControls[i];
    arrControls.RemoveAll();
}
