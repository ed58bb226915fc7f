#include "gui/editor/PresetMenu.h"

#include <algorithm>

juce::PopupMenu PresetMenu::make (const std::vector<Presets::MenuEntry>& entries, int currentId)
{
    juce::PopupMenu menu;

    for (const auto& entry : entries)
    {
        if (entry.kind == Presets::MenuEntry::Kind::heading)
        {
            if (menu.getNumItems() > 0)
                menu.addSeparator();

            menu.addSectionHeader (entry.text);
            continue;
        }

        juce::PopupMenu group;

        for (const auto& item : entry.items)
            group.addItem (item.id, item.text, true, item.id == currentId);

        const auto holdsCurrent = std::any_of (
            entry.items.begin(), entry.items.end(), [currentId] (const auto& item) { return item.id == currentId; });
        menu.addSubMenu (entry.text, group, true, nullptr, holdsCurrent);
    }

    return menu;
}
