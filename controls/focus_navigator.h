#pragma once
// Where the focus goes: Tab, access keys.
#include "controls/widget.h"

namespace orv::controls {

enum class Direction { Next, Back };

/// The stop after `from` in reading order; the first (last) when `from` is nothing; nothing past the end. Stops are
/// the visible, effectively enabled tab stops; of an option group the chosen button, or its first one.
Widget* NextStop(Widget& root, const Widget* from, Direction direction);

/// The widget whose access key is `letter`, searched behind `from` first and then from the start, so that a letter
/// used twice goes round. Nothing when there is none.
Widget* FindAccessKey(Widget& root, const Widget* from, wchar_t letter);

} // namespace orv::controls
