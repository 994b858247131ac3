#include "cli/output_stream.h"

#include "host/sim/utf8.h"
#include "text/error.h"

namespace orv::cli {
namespace {

constexpr std::size_t kBlock = 65536;

} // namespace

OutputBuffer::int_type OutputBuffer::overflow(int_type c) {
    const char byte = traits_type::to_char_type(c);
    if (traits_type::eq_int_type(c, traits_type::eof()) || xsputn(&byte, 1) == 1)
        return traits_type::not_eof(c);
    return traits_type::eof();
}

std::streamsize OutputBuffer::xsputn(const char* bytes, std::streamsize count) {
    held_.append(bytes, static_cast<std::size_t>(count));
    return held_.size() < kBlock || Drain() ? count : 0;
}

int OutputBuffer::sync() {
    return Drain() ? 0 : -1;
}

bool OutputBuffer::Drain() {
    if (!failure_.empty())
        return false;
    try {
        file_.Write(held_);
    } catch (const Error& error) {
        failure_ = sim::ToUtf8(error.Description());
    }
    held_.clear();
    return failure_.empty();
}

} // namespace orv::cli
