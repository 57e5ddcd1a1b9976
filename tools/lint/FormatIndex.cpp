#include "FormatIndex.h"
#include <cwchar>

namespace uilint {
namespace {

void AddAttributes(const MDUIElement& element, ElementInfo& info)
{
    if (element.base != nullptr)
        AddAttributes(*element.base, info);
    for (int i = 0; i < element.attributeCount; ++i) {
        const MDUIAttribute& attribute = element.attributes[i];
        info.indexOf.emplace(attribute.name, static_cast<int>(info.attributes.size()));
        info.attributes.push_back(&attribute);
        info.attributeNames.push_back(attribute.name);
        info.flags |= attribute.flags;
        info.placed = info.placed || attribute.syntax == UISyntaxRect || attribute.syntax == UISyntaxRectEx;
    }
}

}  // namespace

const FormatIndex& FormatIndex::Get()
{
    static const FormatIndex index;
    return index;
}

FormatIndex::FormatIndex() { Visit(MNUIFormat::GetRoot(), nullptr, true, 0); }

void FormatIndex::Visit(const MDUIElement& element, const MDUIElement* parent, bool throughGroups, int depth)
{
    // The tree shares elements (a font under a window and under a control) but
    // has no cycles; the depth bound only guards against a wrong description.
    if (depth > 32)
        return;
    m_placements.push_back(Placement{&element, parent, throughGroups});
    if (m_info.find(&element) == m_info.end()) {
        ElementInfo& info = m_info[&element];
        AddAttributes(element, info);
        info.isGroup = info.attributes.empty();
        for (int i = 0; i < element.childCount; ++i) {
            info.childNames.push_back(element.children[i]->name);
            info.hasRepeatingChildren = info.hasRepeatingChildren || element.children[i]->repeats;
        }
    }
    const bool group = m_info[&element].isGroup;
    for (int i = 0; i < element.childCount; ++i)
        Visit(*element.children[i], &element, throughGroups && group, depth + 1);
}

const ElementInfo& FormatIndex::Info(const MDUIElement& element) const { return m_info.at(&element); }

const MDUIElement* FormatIndex::ParentOf(const wchar_t* elementName) const
{
    for (const Placement& placement : m_placements) {
        if (placement.parent != nullptr && wcscmp(placement.element->name, elementName) == 0)
            return placement.parent;
    }
    return nullptr;
}

const MDUIElement* FormatIndex::OwnerOf(const wchar_t* attributeName) const
{
    for (const Placement& placement : m_placements) {
        if (MNUIFormat::FindAttribute(*placement.element, attributeName) != nullptr)
            return placement.element;
    }
    return nullptr;
}

bool FormatIndex::ReferencedTable(const wchar_t* elementName, const wchar_t* attributeName, KeyedTable& table) const
{
    for (const Placement& placement : m_placements) {
        if (!placement.throughGroups || wcscmp(placement.element->name, elementName) != 0)
            continue;
        const MDUIAttribute* key = MNUIFormat::FindAttribute(*placement.element, attributeName);
        if (key != nullptr && (key->flags & UIAttributeKey) != 0) {
            table.parent = placement.parent;
            table.element = placement.element;
            return true;
        }
    }
    return false;
}

}  // namespace uilint
