#pragma once
// What can be taken back in the edit box: the edits themselves, never copies of the content.
#include <cstddef>
#include <vector>

#include "controls/mb_edit_text.h"

namespace orv::controls {

/// Single edits are steps of their own; of each other kind, edits that follow one another where the last one left
/// off make one step.
enum class EditKind { Single, Typing, Backspace, Delete };

struct Edit {
    EditKind kind = EditKind::Single;
    std::size_t at = 0;
    TokenText removed;
    TokenText inserted;
    std::size_t anchor = 0; ///< anchor and caret before
    std::size_t caret = 0;
};

class EditHistory {
  public:
    /// Forgets what was undone.
    void Add(Edit edit);
    /// The next edit begins a step.
    void Break() { open_ = false; }
    void Clear();
    bool CanUndo() const { return !done_.empty(); }
    bool CanRedo() const { return !undone_.empty(); }
    // All of these are for when there is one.
    const Edit& NextUndo() const { return done_.back(); }
    const Edit& NextRedo() const { return undone_.back(); }
    /// The edit to take back or to do again, valid until the next call.
    const Edit& Undo();
    const Edit& Redo();

  private:
    bool Joined(const Edit& edit);

    std::vector<Edit> done_;
    std::vector<Edit> undone_;
    bool open_ = false;
};

} // namespace orv::controls
