#pragma once
// Where the focus goes: Tab, access keys.
#include "controls/widget.h"

namespace orv::controls {

class TabStrip;

enum class Direction { Next, Back };

/// The stop after `from` in reading order; the first (last) when `from` is nothing; nothing past the end. Stops are
/// the visible, effectively enabled tab stops; of an option group the chosen button, or its first one.
Widget* NextStop(Widget& root, const Widget* from, Direction direction);

/// The widget whose access key is `letter`, searched behind `from` first and then from the start, so that a letter
/// used twice goes round. Nothing when there is none.
Widget* FindAccessKey(Widget& root, const Widget* from, wchar_t letter);

/// The strip of tabs that stands nearest to a widget: beside it or below, else beside its parent, and so on.
TabStrip* NearestTabStrip(Widget& from);

} // namespace orv::controls
