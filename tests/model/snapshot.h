#pragma once
// Everything that a model holds, as one text.
#include <string>

#include "model/out_format_config.h"

namespace orv::test {

struct SnapshotOptions {
    bool cutItems = false; ///< only the items that the device has room for, as their count is saved
    bool groups = true;
    bool maxCount = true;
};

std::wstring Snapshot(model::OutFormatConfig& root, const SnapshotOptions& options = {});

} // namespace orv::test
