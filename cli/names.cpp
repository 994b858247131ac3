#include "cli/names.h"

#include <algorithm>
#include <numeric>

#include "cli/values.h"
#include "host/sim/utf8.h"

namespace orv::cli {
namespace {

constexpr std::size_t kSuggestions = 3;
constexpr std::size_t kLongestName = 64;

/// Letters to change, put in or leave out to make one name of the other.
std::size_t Distance(std::wstring_view a, std::wstring_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = diagonal + (SameIgnoringCase(a.substr(i, 1), b.substr(j, 1)) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

std::wstring Nearest(std::wstring_view wanted, std::vector<std::wstring> known) {
    // Nobody means a name that long; the comparison would take its time.
    wanted = wanted.substr(0, kLongestName);
    std::stable_sort(known.begin(), known.end(), [&](const std::wstring& a, const std::wstring& b) {
        return Distance(wanted, a) < Distance(wanted, b);
    });
    known.erase(std::unique(known.begin(), known.end()), known.end());
    std::wstring list;
    for (std::size_t i = 0; i < std::min(kSuggestions, known.size()); ++i)
        list += (i == 0 ? L"" : L", ") + known[i];
    return list;
}

std::wstring WithoutIndex(const std::wstring& name) {
    return name.substr(0, name.find(L'('));
}

/// Looks one name up, part by part.
class Resolver {
  public:
    Resolver(model::OutFormatConfig& model, std::wstring_view name)
        : model_(model), name_(name), parts_(ParseName(name)) {}

    FieldRef Run() {
        const std::wstring first = Known(parts_[0].name, {L"Codes", L"Groups", L"StandardFormat", L"AdvancedFormats"});
        if (first == L"Codes")
            return parts_[0].index ? FieldIn(CodeSection(model_, Position(0, model_.Codes().Count())), 1)
                                   : FieldIn(CodesSection(model_), 1);
        if (first == L"Groups")
            return FieldIn(GroupSection(model_, Position(0, model_.Codes().Groups().Count())), 1);
        if (first == L"StandardFormat")
            return StandardField();
        if (first == L"AdvancedFormats")
            return FormatField();
        if (SameIgnoringCase(parts_[0].name, L"Expression"))
            return FieldIn(CodesSection(model_), 0);
        return FieldIn(RootSection(model_), 0,
                       {L"Codes", L"Groups", L"StandardFormat", L"AdvancedFormats", L"Expression"});
    }

  private:
    FieldRef StandardField() {
        if (parts_[0].index)
            Refuse(L"StandardFormat takes no index");
        return FieldIn(StandardSection(model_), 1);
    }

    FieldRef FormatField() {
        const std::int32_t format = Position(0, model_.AdvancedFormats().Count());
        if (parts_.size() < 2 || Known(parts_[1].name, {L"OutItems"}).empty())
            return FieldIn(FormatSection(model_, format), 1, {L"OutItems"});
        const std::int32_t item = Position(1, model_.AdvancedFormats().Item(format).OutItems().Count());
        return FieldIn(ItemSection(model_, format, item), 2);
    }

    static std::wstring Known(const std::wstring& name, std::initializer_list<const wchar_t*> candidates) {
        for (const wchar_t* candidate : candidates)
            if (SameIgnoringCase(name, candidate))
                return candidate;
        return {};
    }

    std::int32_t Position(std::size_t part, std::int32_t count) {
        const std::wstring& name = parts_[part].name;
        if (!parts_[part].index)
            Refuse(name + L" wants an index: " + name + L"(1)");
        if (count == 0)
            Refuse(L"there are no " + name);
        const std::int32_t position = *parts_[part].index;
        if (position < 1 || position > count)
            Refuse(L"there is no " + name + L"(" + std::to_wstring(position) + L"); the index goes from 1 to " +
                   std::to_wstring(count));
        return position;
    }

    /// The field that part `part` names, which must be the last one. `others` are names that would have done, too.
    FieldRef FieldIn(const Section& section, std::size_t part, std::vector<std::wstring> others = {}) {
        if (parts_.size() <= part)
            Refuse(L"a field is missing; there are " + List(section));
        for (const bool exactly : {true, false})
            for (const FieldRef& field : section.fields)
                if (Matches(field, parts_[part], exactly)) {
                    if (parts_.size() > part + 1)
                        Refuse(L"nothing goes behind " + field.name);
                    return field;
                }
        RefuseUnknown(section, parts_[part], std::move(others));
    }

    static bool Matches(const FieldRef& field, const NamePart& part, bool exactly) {
        const std::wstring name = part.index ? part.name + L"(" + std::to_wstring(*part.index) + L")" : part.name;
        return exactly ? field.name == name : SameIgnoringCase(field.name, name);
    }

    [[noreturn]] void RefuseUnknown(const Section& section, const NamePart& part, std::vector<std::wstring> others) {
        std::int32_t count = 0;
        bool indexed = false;
        for (const FieldRef& field : section.fields) {
            const std::wstring plain = WithoutIndex(field.name);
            others.push_back(plain);
            if (SameIgnoringCase(plain, part.name)) {
                ++count;
                indexed = plain != field.name;
            }
        }
        if (indexed)
            Refuse(text::Excerpt(part.name) + L" wants an index from 0 to " + std::to_wstring(count - 1));
        if (count > 0)
            Refuse(text::Excerpt(part.name) + L" takes no index");
        const std::wstring owner = section.name.empty() ? L"" : section.name + L" has no field ";
        Refuse((owner.empty() ? L"there is no " : owner) + text::Excerpt(part.name) + L"; nearest: " +
               Nearest(part.name, std::move(others)));
    }

    static std::wstring List(const Section& section) {
        std::wstring list;
        for (const FieldRef& field : section.fields)
            list += (list.empty() ? L"" : L", ") + field.name;
        return list;
    }

    [[noreturn]] void Refuse(const std::wstring& reason) { throw AssignmentError(name_, reason); }

    model::OutFormatConfig& model_;
    std::wstring_view name_;
    std::vector<NamePart> parts_;
};

NamePart ParsePart(std::wstring_view text, std::wstring_view whole) {
    const std::size_t open = text.find(L'(');
    NamePart part{std::wstring(text.substr(0, open)), {}};
    if (part.name.empty())
        throw AssignmentError(whole, L"a name is missing");
    if (open == std::wstring_view::npos)
        return part;
    if (!text.ends_with(L')'))
        throw AssignmentError(whole, L"an index ends with \")\"");
    try {
        part.index = ParseNumber(text.substr(open + 1, text.size() - open - 2), 32, true);
    } catch (const ValueError& error) {
        throw AssignmentError(whole, L"index of " + text::Excerpt(part.name) + L": " + error.Reason());
    }
    return part;
}

} // namespace

AssignmentError::AssignmentError(std::wstring_view name, std::wstring_view reason)
    : std::runtime_error(sim::ToUtf8(text::Excerpt(name) + L": " + std::wstring(reason))) {}

std::vector<NamePart> ParseName(std::wstring_view name) {
    std::vector<NamePart> parts;
    for (std::size_t begin = 0; begin <= name.size();) {
        const std::size_t end = std::min(name.find(L'.', begin), name.size());
        parts.push_back(ParsePart(name.substr(begin, end - begin), name));
        begin = end + 1;
    }
    return parts;
}

FieldRef Resolve(model::OutFormatConfig& model, std::wstring_view name) {
    return Resolver(model, name).Run();
}

} // namespace orv::cli
