#include "editor/number_pair.h"

namespace orv::editor {

NumberPair::NumberPair(Context& context, controls::Widget& parent, const std::wstring& leastName, Store storeLeast,
                       const std::wstring& greatestName, Store storeGreatest)
    : context_(context), storeLeast_(std::move(storeLeast)), storeGreatest_(std::move(storeGreatest)),
      least_(context, parent, leastName,
             [this](Number number) {
                 if (!Fits(!greatest_.Box().Known() || number <= greatest_.Box().Value(), number, greatest_,
                           storeGreatest_))
                     return false;
                 storeLeast_(number);
                 return true;
             }),
      greatest_(context, parent, greatestName, [this](Number number) {
          if (!Fits(!least_.Box().Known() || number >= least_.Box().Value(), number, least_, storeLeast_))
              return false;
          storeGreatest_(number);
          return true;
      }) {}

bool NumberPair::Fits(bool fits, Number number, NumberField& other, const Store& storeOther) {
    if (fits || number <= 0) // which the model does not take
        return true;
    context_.form.Boxes().Beep();
    if (number < other.Box().Least() || number > other.Box().Greatest()) {
        other.Refuse();
        return false;
    }
    storeOther(number);
    tookAlong_ = true;
    context_.changed();
    return false;
}

void NumberPair::SetUsable(bool usable, const std::wstring& reason) {
    least_.SetUsable(usable, reason);
    greatest_.SetUsable(usable, reason);
}

bool NumberPair::Commit(NumberField& field) {
    tookAlong_ = false;
    return field.CommitPending() || (tookAlong_ && field.CommitPending());
}

bool NumberPair::CommitPending() {
    const bool stored = Commit(least_);
    return Commit(greatest_) && stored;
}

} // namespace orv::editor
