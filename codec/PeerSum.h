// A peer device's unique id and the summary id that belongs to it.
#pragma once

#include <string>

// Both UTF-8. Never written to a stream as a unit: the peer messages carry the two as fields of their own.
struct PeerSum {
  std::string udId;
  std::string sumId;

  bool operator==(const PeerSum&) const = default;
};
