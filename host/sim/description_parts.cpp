#include "host/sim/description_parts.h"

#include <utility>

#include "host/sim/description.h"
#include "host/sim/utf8.h"

namespace orv::sim {
namespace {

using nlohmann::json;

/// A file needs seven.
constexpr std::size_t kDeepest = 16;
/// Values that are kept at once. The largest parameter has 32767, and the first one of a file is kept to its end.
constexpr std::size_t kMostKept = 100'000;

/// Programs hold the texts of a device several times over, each character in four bytes.
constexpr std::size_t kLongestText = 1'000'000;

struct Child {
    Part parent;
    std::string_view key; ///< empty: any element of the list
    Part part;
    bool list;
};

constexpr Child kChildren[] = {
    {Part::System, "clusters", Part::Clusters, true},      {Part::Clusters, "", Part::Cluster, false},
    {Part::System, "devices", Part::Devices, true},        {Part::Devices, "", Part::Device, false},
    {Part::Device, "parameters", Part::Parameters, true},  {Part::Parameters, "", Part::Parameter, false},
    {Part::Parameter, "enumeration", Part::Choices, true}, {Part::Choices, "", Part::Choice, false},
};

/// What stands in the list, Other where `list` is none.
Part ElementOf(Part list) {
    for (const Child& child : kChildren)
        if (child.parent == list && child.key.empty())
            return child.part;
    return Part::Other;
}

/// Builds values from the parser's events, with a stack of its own instead of the caller's.
class Builder {
  public:
    Builder(std::string_view name, PartListener& listener) : name_(name), listener_(listener) {}

    bool null() { return Deliver(nullptr); }
    bool boolean(bool value) { return Deliver(value); }
    bool number_integer(json::number_integer_t value) { return Deliver(value); }
    bool number_unsigned(json::number_unsigned_t value) { return Deliver(value); }
    bool number_float(json::number_float_t value, const std::string&) { return Deliver(value); }
    bool string(std::string& value) {
        RequireShort(value);
        return Deliver(std::move(value));
    }
    bool binary(json::binary_t&) { return false; }
    bool start_object(std::size_t) { return Open(json::object()); }
    bool start_array(std::size_t) { return Open(json::array()); }
    bool end_object() { return Close(); }
    bool end_array() { return Close(); }
    bool key(std::string& key) {
        RequireShort(key);
        open_.back().key = std::move(key);
        return true;
    }
    bool parse_error(std::size_t, const std::string&, const json::exception& error) {
        throw FileError(name_, "", "not JSON: " + Excerpt(error.what()));
    }

    json TakeDocument() { return std::move(document_); }

  private:
    struct Level {
        json value;
        Part part;
        std::size_t keptBefore;
        std::string key;       ///< of the value that comes next, in an object
        std::size_t count = 0; ///< values before it, in a list
    };

    void RequireShort(const std::string& text) const {
        if (text.size() > kLongestText)
            throw FileError(name_, Place(), "a text longer than " + std::to_string(kLongestText) + " bytes");
    }

    std::string Place() const {
        std::string place;
        for (const Level& level : open_)
            place += "/" + (level.value.is_object() ? level.key : std::to_string(level.count));
        return place;
    }

    Part PartOfNext(bool list) const {
        if (open_.empty())
            return list ? Part::Other : Part::System;
        const Level& parent = open_.back();
        for (const Child& child : kChildren)
            if (child.parent == parent.part && child.list == list && (child.key.empty() || child.key == parent.key))
                return child.part;
        return Part::Other;
    }

    bool Open(json&& empty) {
        if (open_.size() == kDeepest)
            throw FileError(name_, Place(), "nested deeper than " + std::to_string(kDeepest) + " levels");
        const Part part = PartOfNext(empty.is_array());
        open_.push_back({std::move(empty), part, kept_, {}});
        if (ElementOf(part) != Part::Other)
            listener_.Begin(part);
        return true;
    }

    bool Close() {
        Level closed = std::move(open_.back());
        open_.pop_back();
        return Deliver(std::move(closed.value), closed.keptBefore);
    }

    bool Deliver(json&& value) { return Deliver(std::move(value), kept_); }

    bool Deliver(json&& value, std::size_t keptBefore) {
        if (open_.empty()) {
            document_ = std::move(value);
            return true;
        }
        Level& parent = open_.back();
        if (const Part part = ElementOf(parent.part); part != Part::Other) {
            listener_.Take(part, value, Place());
            if (parent.count++ > 0) {
                kept_ = keptBefore;
                return true;
            }
            parent.value.push_back(std::move(value));
        } else if (parent.value.is_object()) {
            parent.value[parent.key] = std::move(value);
        } else {
            parent.value.push_back(std::move(value));
            ++parent.count;
        }
        if (++kept_ > kMostKept)
            throw FileError(name_, Place(), "more than " + std::to_string(kMostKept) + " values in one place");
        return true;
    }

    std::string name_;
    PartListener& listener_;
    std::vector<Level> open_;
    std::size_t kept_ = 0;
    json document_;
};

} // namespace

json ReadParts(std::string_view text, std::string_view name, PartListener& listener) {
    // The parser takes it for the end, and would never see what follows.
    if (text.find('\0') != std::string_view::npos)
        throw FileError(name, "", "not JSON: a zero byte");
    Builder builder(name, listener);
    json::sax_parse(text, &builder);
    return builder.TakeDocument();
}

} // namespace orv::sim
