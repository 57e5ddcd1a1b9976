// MNUIName: the element and attribute names of the XML user-interface format,
// written once. The reader looks these names up and the format description
// (MNUIFormat.h) lists them; names are matched exactly and case-sensitively.
#pragma once

namespace MNUIName {

// Elements.
inline constexpr wchar_t root[] = L"root";
inline constexpr wchar_t window[] = L"window";
inline constexpr wchar_t control[] = L"control";
inline constexpr wchar_t footer[] = L"footer";
inline constexpr wchar_t font[] = L"font";
inline constexpr wchar_t textstyle[] = L"textstyle";
inline constexpr wchar_t logfont[] = L"logfont";
inline constexpr wchar_t fontschema[] = L"fontschema";
inline constexpr wchar_t controlsschema[] = L"controlsschema";
inline constexpr wchar_t str_table[] = L"str_table";
inline constexpr wchar_t str_table_id[] = L"str_table_id";
inline constexpr wchar_t entry[] = L"entry";
inline constexpr wchar_t freedata[] = L"freedata";
inline constexpr wchar_t section[] = L"section";
inline constexpr wchar_t script[] = L"script";
inline constexpr wchar_t icons[] = L"icons";
inline constexpr wchar_t cursors[] = L"cursors";
inline constexpr wchar_t imagelist[] = L"imagelist";
inline constexpr wchar_t image[] = L"image";

// Attributes of a control (and of the window's control part).
inline constexpr wchar_t schema[] = L"schema";
inline constexpr wchar_t ids[] = L"ids";
inline constexpr wchar_t idv[] = L"idv";
inline constexpr wchar_t enabled[] = L"enabled";
inline constexpr wchar_t tooltip[] = L"tooltip";
inline constexpr wchar_t tooltipid[] = L"tooltipid";
inline constexpr wchar_t text[] = L"text";
inline constexpr wchar_t textid[] = L"textid";
inline constexpr wchar_t rect[] = L"rect";
inline constexpr wchar_t rectex[] = L"rectex";
inline constexpr wchar_t visible[] = L"visible";
inline constexpr wchar_t st[] = L"st";
inline constexpr wchar_t stex[] = L"stex";
inline constexpr wchar_t skinobjname[] = L"skinobjname";
inline constexpr wchar_t actualsize[] = L"actualsize";
inline constexpr wchar_t type[] = L"type";
inline constexpr wchar_t state[] = L"state";
inline constexpr wchar_t windowless[] = L"windowless";
inline constexpr wchar_t autoskin[] = L"autoskin";
inline constexpr wchar_t skinphobjpath[] = L"skinphobjpath";
inline constexpr wchar_t anchorss[] = L"anchorss";
inline constexpr wchar_t anchorsv[] = L"anchorsv";
inline constexpr wchar_t cxmin[] = L"cxmin";
inline constexpr wchar_t cymin[] = L"cymin";
inline constexpr wchar_t cxmax[] = L"cxmax";
inline constexpr wchar_t cymax[] = L"cymax";
inline constexpr wchar_t additional[] = L"additional";

// Attributes of the window alone, and of its footer.
inline constexpr wchar_t skinform[] = L"skinform";
inline constexpr wchar_t move[] = L"move";
inline constexpr wchar_t resize[] = L"resize";
inline constexpr wchar_t status[] = L"status";
inline constexpr wchar_t statusid[] = L"statusid";

// Attributes of fonts, text styles and log fonts.
inline constexpr wchar_t schemaonly[] = L"schemaonly";
inline constexpr wchar_t ellipsis[] = L"ellipsis";
inline constexpr wchar_t righttoleft[] = L"righttoleft";
inline constexpr wchar_t argbeffectcolor[] = L"argbeffectcolor";
inline constexpr wchar_t rgbtextcolor[] = L"rgbtextcolor";
inline constexpr wchar_t textflags[] = L"textflags";
inline constexpr wchar_t texteffect[] = L"texteffect";
inline constexpr wchar_t height[] = L"height";
inline constexpr wchar_t width[] = L"width";
inline constexpr wchar_t escapement[] = L"escapement";
inline constexpr wchar_t orientation[] = L"orientation";
inline constexpr wchar_t italic[] = L"italic";
inline constexpr wchar_t underline[] = L"underline";
inline constexpr wchar_t strikeout[] = L"strikeout";
inline constexpr wchar_t facename[] = L"facename";
inline constexpr wchar_t weight[] = L"weight";
inline constexpr wchar_t charset[] = L"charset";
inline constexpr wchar_t outprecision[] = L"outprecision";
inline constexpr wchar_t clipprecision[] = L"clipprecision";
inline constexpr wchar_t quality[] = L"quality";
inline constexpr wchar_t pitch[] = L"pitch";
inline constexpr wchar_t family[] = L"family";

// Attributes of string tables, free data and the script reference.
inline constexpr wchar_t id[] = L"id";
inline constexpr wchar_t name[] = L"name";
inline constexpr wchar_t value[] = L"value";
inline constexpr wchar_t file[] = L"file";

// Attributes of image lists and their images ("file", "name", "width" and "id"
// are shared with the sections above).
inline constexpr wchar_t resid[] = L"resid";
inline constexpr wchar_t initial[] = L"initial";
inline constexpr wchar_t mask[] = L"mask";
inline constexpr wchar_t effect[] = L"effect";
inline constexpr wchar_t index[] = L"index";
inline constexpr wchar_t hotx[] = L"hotx";
inline constexpr wchar_t hoty[] = L"hoty";

}  // namespace MNUIName
