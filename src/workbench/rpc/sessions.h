// The registration sessions that are open over one connection.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <stdexcept>

#include "workbench/host/workbench.h"
#include "workbench/session/mirrored_session.h"

namespace tiepoint::workbench {

/// No session is open, or none of that number.
class NoSession : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Sessions {
 public:
  Sessions() = default;
  ~Sessions() { endAll(); }
  Sessions(const Sessions&) = delete;
  Sessions& operator=(const Sessions&) = delete;

  /// Keeps a new session; its number counts from 1 and is never used again.
  std::uint64_t begin(SessionPtr session);
  /// Throws NoSession.
  void end(std::uint64_t number);
  /// The newest first.
  void endAll();

  /// Throws NoSession.
  MirroredSession& require(std::uint64_t number) const;
  /// The number of the newest that is still open. Throws NoSession.
  std::uint64_t newest() const;

 private:
  std::map<std::uint64_t, std::unique_ptr<MirroredSession>> open;
  std::uint64_t lastNumber = 0;
};

}  // namespace tiepoint::workbench
