#include "text/error.h"

#include "text/texts.h"

namespace orv {
namespace {

std::wstring DescriptionOf(std::int32_t number) {
    using text::Id;
    switch (number) {
    case error_number::kInvalidArgument:
        return text::Load(Id::ErrInvalidArgument);
    case error_number::kOverflow:
        return text::Load(Id::ErrOverflow);
    case error_number::kOutOfMemory:
        return text::Load(Id::ErrOutOfMemory);
    case error_number::kSubscript:
        return text::Load(Id::ErrSubscript);
    case error_number::kTypeMismatch:
        return text::Load(Id::ErrTypeMismatch);
    case error_number::kFileAccess:
        return text::Load(Id::ErrFileAccess);
    case error_number::kObjectNotSet:
        return text::Load(Id::ErrObjectNotSet);
    case error_number::kPropertyArrayIndex:
        return text::Load(Id::ErrPropertyArrayIndex);
    default:
        return text::Load(Id::ErrUnexpected);
    }
}

} // namespace

Error::Error(std::int32_t number, std::wstring description)
    : number_(number), description_(std::move(description)), narrow_("error " + std::to_string(number) + ": ") {
    for (wchar_t c : description_)
        narrow_ += c >= L' ' && c < 127 ? static_cast<char>(c) : '?';
}

Error::Error(std::int32_t number) : Error(number, DescriptionOf(number)) {}

} // namespace orv
