#pragma once
// What the program says on its standard streams, as UTF-8. From any thread; a program without streams says nothing.
#include <string_view>

namespace orv::host {

class Transcript {
  public:
    /// One line; line breaks inside it become " / ".
    static void Line(std::wstring_view line);
    static void Complain(std::string_view utf8);
    static void Print(std::string_view utf8);
};

} // namespace orv::host
