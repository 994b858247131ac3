#include "controls/mb_edit_history.h"

#include <utility>

namespace orv::controls {

void EditHistory::Add(Edit edit) {
    if (!open_ || done_.empty() || !Joined(edit))
        done_.push_back(std::move(edit));
    undone_.clear();
    open_ = true;
}

bool EditHistory::Joined(const Edit& edit) {
    Edit& last = done_.back();
    if (edit.kind != last.kind)
        return false;
    switch (edit.kind) {
    case EditKind::Typing:
        if (edit.removed.Size() > 0 || edit.at != last.at + last.inserted.Size())
            return false;
        last.inserted.Append(edit.inserted);
        return true;
    case EditKind::Backspace:
        if (edit.at + edit.removed.Size() != last.at)
            return false;
        last.removed.Splice(0, 0, edit.removed);
        last.at = edit.at;
        return true;
    case EditKind::Delete:
        if (edit.at != last.at)
            return false;
        last.removed.Append(edit.removed);
        return true;
    case EditKind::Single:
        break;
    }
    return false;
}

void EditHistory::Clear() {
    done_.clear();
    undone_.clear();
    open_ = false;
}

const Edit& EditHistory::Undo() {
    open_ = false;
    undone_.push_back(std::move(done_.back()));
    done_.pop_back();
    return undone_.back();
}

const Edit& EditHistory::Redo() {
    open_ = false;
    done_.push_back(std::move(undone_.back()));
    undone_.pop_back();
    return done_.back();
}

} // namespace orv::controls
