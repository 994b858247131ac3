#pragma once
// What a symbology offers beyond its length.
#include <vector>

#include "controls/frame.h"
#include "controls/layout.h"
#include "editor/code_fields.h"
#include "editor/code_parts.h"

namespace orv::editor {

/// The last slot of the code page, which all options share.
class CodeOptions {
  public:
    /// `fields` outlives the options and sets up, shows and commits what is in them.
    CodeOptions(CodeFields& fields, controls::Widget& page);
    CodeOptions(const CodeOptions&) = delete;
    CodeOptions& operator=(const CodeOptions&) = delete;

    controls::LayoutPtr Layout();
    void ShowParts(const CodeParts& parts);
    /// After the fields were shown.
    void EnableTypes();

  private:
    struct Part {
        controls::Frame* frame;
        bool CodeParts::*shown;
        controls::LayoutPtr layout; ///< until Layout takes it
    };

    controls::Frame& AddPart(const wchar_t* name, bool CodeParts::*shown);
    void AddCheckDigit();
    void AddMatrix();
    void AddPostal();
    void AddReadingModes();
    /// A part with one field.
    template <typename Field>
    void AddSingle(Field& field);
    controls::LayoutPtr Take(bool CodeParts::*shown);

    CodeFields& fields_;
    controls::Frame& fraOptions_;
    std::vector<Part> parts_;
    CheckField* checkDigit_ = nullptr;
    ChoiceField* interleavedType_ = nullptr;
    ChoiceField* code39Type_ = nullptr;
};

} // namespace orv::editor
