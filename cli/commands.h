#pragma once
// What the commands do. Each answers its exit status, or raises Failure, AssignmentError, sim::FileError or orv::Error.
#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "cli/device_file.h"

namespace orv::cli {

void ShowText(DeviceFile& file, std::ostream& out);
void ShowJson(DeviceFile& file, std::ostream& out);

/// Prints what a save would ask about; 1 when there is anything.
int Check(DeviceFile& file, std::ostream& out);

/// `target` is a file, or "-" for `out`.
void Export(DeviceFile& file, const std::string& target, std::ostream& out);

/// A line for each value of the device that a save leaves out, with the reason.
void PrintLeftOut(const DeviceFile& file, const std::vector<device::LeftOut>& leftOut, std::ostream& err);

/// Prints what a save would write, and to `err` what it would leave out.
void PrintPlan(DeviceFile& file, std::ostream& out, std::ostream& err);

/// Prints the values that differ; 1 when there are any.
int Diff(const std::string& before, const std::string& after, std::ostream& out);

/// Saves the assigned fields into the configuration and writes it to `target`, "-" for `out`. Nothing is written when
/// one of them fails or would not be kept. What the save leaves out is told to `err`.
void SetFields(DeviceFile& file, const std::vector<std::string>& assignments, const std::string& target, bool force,
               std::ostream& out, std::ostream& err);

struct ApplyOptions {
    std::string to;                  ///< "HOST:PORT"
    std::chrono::seconds timeout{0}; ///< for any one answer; 0: none
    bool quiet = false;
    std::ostream* progress = nullptr; ///< where a bar is drawn; null: nowhere
};
/// Saves to a running device. Raises Failure when not everything was written. What is left out is told to `err`.
void ApplyToDevice(DeviceFile& file, const ApplyOptions& options, std::ostream& out, std::ostream& err);

} // namespace orv::cli
