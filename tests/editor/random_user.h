#pragma once
// Somebody who does anything at all that can be done with a form, and says what.
#include <random>
#include <string>
#include <vector>

#include "controls/form.h"

namespace orv::test {

class RandomUser {
  public:
    /// `saves`: one in so many presses of a button that saves is carried out, because a save takes its time.
    RandomUser(controls::Form& form, std::mt19937& random, int saves = 1)
        : form_(form), random_(random), saves_(saves) {}

    /// One gesture on a widget that can be seen and used, or one key; a line about it.
    std::string Act();

  private:
    int Below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
    bool OneIn(int times) { return Below(times) == 0; }
    std::string Key();
    std::string Use(controls::Widget& widget);
    void UseTree(controls::Widget& widget);
    void UseBytes(controls::Widget& widget);
    void UseNumber(controls::Widget& widget);
    void UseRows(controls::Widget& widget);
    void UsePictures(controls::Widget& widget);
    void UseToolbar(controls::Widget& widget);
    std::vector<controls::Widget*> Usable();

    controls::Form& form_;
    std::mt19937& random_;
    int saves_;
};

} // namespace orv::test
