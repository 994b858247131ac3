#include "platform/temporary_name.h"

namespace orv::platform {
namespace {

constexpr std::string_view kStart = ".orv-";
constexpr std::string_view kEnd = ".tmp";
constexpr std::size_t kChanceDigits = 16;
constexpr std::size_t kCheckDigits = 8;

std::string Digits(std::uint64_t number, std::size_t count) {
    std::string digits(count, '0');
    for (std::size_t i = count; i-- > 0; number >>= 4)
        digits[i] = "0123456789abcdef"[number & 15];
    return digits;
}

std::uint32_t Check(std::string_view chance, std::string_view machine) {
    std::uint32_t sum = 2166136261U;
    for (const std::string_view part : {chance, machine})
        for (const char c : part)
            sum = (sum ^ static_cast<unsigned char>(c)) * 16777619U;
    return sum;
}

std::string NameOf(std::string_view chance, std::string_view machine) {
    std::string name(kStart);
    name.append(chance).append("-").append(Digits(Check(chance, machine), kCheckDigits)).append(kEnd);
    return name;
}

} // namespace

std::string TemporaryName(std::uint64_t chance, std::string_view machine) {
    return NameOf(Digits(chance, kChanceDigits), machine);
}

bool IsTemporaryName(std::string_view name, std::string_view machine) {
    return name.starts_with(kStart) && name.size() > kStart.size() + kChanceDigits &&
           name == NameOf(name.substr(kStart.size(), kChanceDigits), machine);
}

} // namespace orv::platform
