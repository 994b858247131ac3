#include "platform/file_writer.h"

#include "text/error.h"

namespace orv::platform {
namespace {

constexpr std::size_t kBlock = 65536;

SystemFile Open(FileTarget& target) {
    if (target.way == Way::Straight)
        return SystemFile::OpenStraight(target.name);
    if (target.way == Way::InPlace)
        return SystemFile::OpenInPlace(target.name);
    RemoveLeftOvers(target.name);
    SystemFile file = SystemFile::CreateBeside(target);
    if (!target.exists || file.TakeOver(target.name))
        return file;
    target.way = Way::InPlace;
    return SystemFile::OpenInPlace(target.name);
}

} // namespace

FileName NameFrom(std::wstring_view name) {
    if constexpr (sizeof(FileName::value_type) == sizeof(wchar_t))
        return FileName(name.begin(), name.end());
    else
        return std::filesystem::path(name).native();
}

FileWriter::FileWriter(const FileName& name) : target_(FindTarget(name)) {
    // Whoever waits for the other end of a pipe must be able to give up.
    if (target_.way != Way::Straight)
        ending_.emplace();
    file_ = Open(target_);
}

void FileWriter::Append(std::string_view bytes) {
    buffer_ += bytes;
    // What is written over in place is complete before the first old byte goes.
    if (buffer_.size() >= kBlock && target_.way != Way::InPlace)
        Drain();
}

void FileWriter::Commit() {
    if (target_.way == Way::InPlace)
        return WriteOver();
    Drain();
    if (target_.way == Way::Straight)
        return;
    file_.Flush();
    file_.Rename(target_.name);
}

void FileWriter::Drain() {
    file_.Write(buffer_);
    buffer_.clear();
}

void FileWriter::WriteOver() {
    const std::string old = file_.ReadAll();
    const auto put = [this](std::string_view bytes) {
        file_.Write(bytes);
        file_.CutHere();
        file_.Flush();
    };
    try {
        put(buffer_);
    } catch (const Error&) {
        file_.ReadAll(); // back to the beginning
        put(old);
        throw;
    }
}

void WriteWhole(const FileName& name, std::string_view bytes) {
    FileWriter file(name);
    file.Append(bytes);
    file.Commit();
}

} // namespace orv::platform
