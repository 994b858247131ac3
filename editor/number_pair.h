#pragma once
// Two numbers of one slot of which one bounds the other.
#include <functional>
#include <string>

#include "editor/fields.h"

namespace orv::editor {

/// A minimum above the maximum, or a maximum below the minimum, beeps and takes the other one along; that one is
/// stored at once. The focus stays, so that the user sees it, and the next try to leave stores the number itself.
/// One that the other box's own limits do not allow is not taken along: it beeps and is not stored.
class NumberPair {
  public:
    using Number = NumberField::Number;
    using Store = std::function<void(Number)>;

    NumberPair(Context& context, controls::Widget& parent, const std::wstring& leastName, Store storeLeast,
               const std::wstring& greatestName, Store storeGreatest);
    NumberPair(const NumberPair&) = delete;
    NumberPair& operator=(const NumberPair&) = delete;

    NumberField& Least() { return least_; }
    NumberField& Greatest() { return greatest_; }
    void SetUsable(bool usable, const std::wstring& reason = {});
    /// Asks a second time where the first one took the other number along.
    bool CommitPending();

  private:
    /// False after a beep.
    bool Fits(bool fits, Number number, NumberField& other, const Store& storeOther);
    bool Commit(NumberField& field);

    Context& context_;
    Store storeLeast_;
    Store storeGreatest_;
    bool tookAlong_ = false;
    NumberField least_;
    NumberField greatest_;
};

} // namespace orv::editor
