#pragma once

#include "model/Slot.h"

#include <string>
#include <utility>
#include <vector>

namespace corvanta {

/// What every control of a window has. In a caption "&" marks the access key and "&&" is an "&".
struct Control {
    bool Visible = true;
    bool Enabled = true;
    std::string Caption;
    std::string ToolTip;
};

struct CheckBox : Control {
    bool Checked = false;
};

/// One of several exclusive choices.
struct OptionButton : Control {
    bool Selected = false;
};

struct TextBox : Control {
    std::string Text;
    bool Fault = false; ///< the text is none that the box can take
};

/// A text box for a number, with its label as the caption and its unit behind it.
struct NumberBox : TextBox {
    std::string Unit;
};

struct ListEntry {
    std::string Text;
    int ItemData = 0; ///< a number carried with the entry and not shown

    friend bool operator==(const ListEntry&, const ListEntry&) = default;
};

/// A drop-down list or a list box. Entries count from 0; -1 is no selection.
class ListControl : public Control {
  public:
    /// No entries and no selection.
    void Clear() {
        m_entries.clear();
        m_index = NoSelection;
    }
    void Add(std::string text, int itemData = 0) {
        m_entries.push_back({std::move(text), itemData});
    }

    [[nodiscard]] int Count() const { return static_cast<int>(m_entries.size()); }
    [[nodiscard]] const ListEntry& Entry(int index) const {
        return m_entries[SlotOf(index, Count())];
    }
    [[nodiscard]] const std::vector<ListEntry>& Entries() const { return m_entries; }

    [[nodiscard]] int Index() const { return m_index; }

    /// Selects an entry; one that does not exist selects none.
    void Select(int index) { m_index = index >= 0 && index < Count() ? index : NoSelection; }

    /// Text of the selected entry, empty without a selection.
    [[nodiscard]] std::string Text() const {
        return m_index == NoSelection ? std::string() : Entry(m_index).Text;
    }

    /// Index of the first entry with a text or a number, -1 when there is none.
    [[nodiscard]] int Find(const std::string& text) const;
    [[nodiscard]] int FindData(int itemData) const;

    static constexpr int NoSelection = -1;

    /// Width in twips, 0 where the window decides.
    int Width = 0;

  private:
    std::vector<ListEntry> m_entries;
    int m_index = NoSelection;
};

/// A row of a check list.
struct CheckListRow {
    std::string Text;
    int Tag = 0; ///< a number carried with the row and not shown
    bool Checked = false;

    friend bool operator==(const CheckListRow&, const CheckListRow&) = default;
};

/// A flat list of rows that are ticked one by one. Its texts are no captions: "&" is an "&".
struct CheckList : Control {
    std::vector<CheckListRow> Rows;
};

/// An entry of a menu, or with the caption "-" a line between entries.
struct MenuItem : Control {
    bool Checked = false;
    int Command = 0; ///< what it does, a number that its window knows
    int Tag = 0;
};

/// A menu of a menu bar, or below an entry.
struct Menu : Control {
    std::vector<MenuItem> Items;
};

/// A button of a toolbar; with an empty key a line between buttons.
struct ToolButton : Control {
    std::string Key;
    std::string Image;
    int Command = 0;
    int Tag = 0;
    bool TwoState = false;
    bool Pressed = false;
};

} // namespace corvanta
