// The record of a set command: put together from a file and fields, and checked for what the service does not check.
#pragma once

#include <optional>
#include <string>

#include "apps/marnockctl/CommandLine.h"
#include "apps/marnockctl/DeviceFamily.h"

namespace KT {

// Reads the command's file and fields into a record that otherwise holds the defaults. Throws std::runtime_error that
// says what is wrong and where.
template <class Family>
typename Family::Record ReadRecordInput(const DeviceSet<Family>& command);

// Why no string of the record may be sent (longer than kMaxStringBytes), or nothing.
template <class Record>
std::optional<std::string> WhyNotSendable(const Record& record);

// Why a get could not give the record back, or nothing: the answer would pass its capacity, or the table would hold
// only default values, which cannot be told from an absent row.
template <class Family>
std::optional<std::string> WhyNotReadable(const typename Family::Record& record, const std::string& pkgName);

}  // namespace KT
