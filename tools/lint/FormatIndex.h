// Lookups in the format description that the linter makes for every element:
// built once, since the description is constant.
#pragma once
#include <MNUIFormat.h>
#include <string>
#include <unordered_map>
#include <vector>

namespace uilint {

// What the linter needs of one described element.
struct ElementInfo {
    std::vector<const MDUIAttribute*> attributes;  // reading order, the base's first
    std::unordered_map<std::wstring, int> indexOf;  // attribute name -> index in `attributes`
    std::vector<const wchar_t*> attributeNames;
    std::vector<const wchar_t*> childNames;
    DWORD flags = 0;                    // every flag of its attributes
    bool isGroup = false;               // no attributes: the reader looks through it to its children
    bool hasRepeatingChildren = false;
    bool placed = false;                // it has a rectangle
};

// The table that elements of one kind are kept in under their key.
struct KeyedTable {
    const MDUIElement* parent = nullptr;
    const MDUIElement* element = nullptr;
};

class FormatIndex {
public:
    static const FormatIndex& Get();

    const ElementInfo& Info(const MDUIElement& element) const;
    // An element that has a child of this name, or null.
    const MDUIElement* ParentOf(const wchar_t* elementName) const;
    // An element that has an attribute of this name, or null.
    const MDUIElement* OwnerOf(const wchar_t* attributeName) const;
    // The table that an attribute flagged UIAttributeReference names: elements of
    // the same name keyed by an attribute of the same name, found through groups
    // from the root. False when there is none.
    bool ReferencedTable(const wchar_t* elementName, const wchar_t* attributeName, KeyedTable& table) const;

private:
    FormatIndex();
    void Visit(const MDUIElement& element, const MDUIElement* parent, bool throughGroups, int depth);

    struct Placement {
        const MDUIElement* element;
        const MDUIElement* parent;
        bool throughGroups;  // every element above it is a group
    };
    std::unordered_map<const MDUIElement*, ElementInfo> m_info;
    std::vector<Placement> m_placements;  // every element of the tree, depth first
};

}  // namespace uilint
