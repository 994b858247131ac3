#pragma once
// A list to choose one entry from; no free text.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "controls/widget.h"

namespace orv::controls {

class ComboBox : public Widget {
  public:
    struct Entry {
        std::wstring text;
        std::int32_t data = 0;
        bool operator==(const Entry&) const = default;
    };

    explicit ComboBox(std::wstring name, int index = kNoIndex);

    const std::vector<Entry>& Entries() const { return entries_; }
    /// Selects nothing.
    void SetEntries(std::vector<Entry> entries);
    /// 0-based; -1 is none: what is not known, or is no choice.
    int Selected() const { return selected_; }
    void SetSelected(int entry);
    /// Data of the selected entry; 0 without one.
    std::int32_t SelectedData() const;
    /// The first entry with that data. A value that the list lacks is added at its end under its own number, so
    /// that what is stored is shown. It goes when the program shows another one: it is no choice for the next object.
    void SelectData(std::int32_t data);

    /// Gesture: raises onClick when the selection changes.
    void Select(int entry);
    /// Gesture: the peer's list is open; keys are its own until it closes.
    void SetDropped(bool dropped) { dropped_ = dropped; }

    KeyOutcome HandleKey(const KeyEvent& key) override;
    /// How wide it wants to be at 96 dots an inch, whatever its entries; 0: as they need.
    void SetWidth(int width) { width_ = width; }
    Size MinimumSize(const TextMeasure& measure) const override;

    std::function<void()> onClick;

  private:
    KeyOutcome SelectByLetter(wchar_t letter);
    void Show(int entry);
    int Last() const { return static_cast<int>(entries_.size()) - 1; }

    std::vector<Entry> entries_;
    bool stranger_ = false; ///< the last entry is a value that the list lacks
    int selected_ = -1;
    int width_ = 0;
    bool dropped_ = false;
};

} // namespace orv::controls
