// The switchboard: every call that the module makes to this host goes through it.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace foreign {

/// What becomes of one chosen call.
enum class Fault {
  none,
  /// It gives what its type has for nothing: null, 0, false, a refused dialog. A call without a
  /// result does its work, as there is nothing to withhold.
  nothing,
  /// It gives something empty where there is such a thing: a drawing without anything in it, a
  /// choice of no files. Elsewhere as `nothing`.
  emptiness,
  /// It throws and has done nothing. A call by which the module gives something back is done even
  /// so: the host would otherwise keep what the module can't give back twice.
  exception,
  /// It does its work, and throws then; but where it would hand something out, which would be lost,
  /// it throws before.
  lateException
};

class InjectedFault : public std::runtime_error {
 public:
  explicit InjectedFault(const std::string& call) : std::runtime_error("the host fails in " + call) {}
};

class Switchboard {
 public:
  /// Counts from 1 again, and spoils the call of that number; 0 spoils none.
  void expectFault(Fault fault, std::uint64_t number);
  std::uint64_t callCount() const { return count; }
  /// The name of the call that was spoiled; empty while there was none.
  const std::string& spoiledCall() const { return spoiled; }

  /// Notes something that a module must not do.
  void complain(const std::string& misuse) { complaints.push_back(misuse); }
  /// What was noted since the last time.
  std::vector<std::string> takeComplaints() { return std::exchange(complaints, {}); }

  /// Lets a call through that asks for something or adds something. `empty` gives the empty answer.
  template <class Work, class Empty>
  auto answer(const char* call, Work work, Empty empty) -> decltype(work()) {
    using Result = decltype(work());
    const Fault fault = next(call);
    if (fault == Fault::exception) throw InjectedFault(call);
    if constexpr (std::is_void_v<Result>) {
      work();
      if (fault == Fault::lateException) throw InjectedFault(call);
    } else {
      if (fault == Fault::lateException) throw InjectedFault(call);
      if (fault == Fault::emptiness) return empty();
      return fault == Fault::nothing ? Result{} : work();
    }
  }
  template <class Work>
  auto answer(const char* call, Work work) -> decltype(work()) {
    return answer(call, work, [] { return decltype(work())(); });
  }

  /// Lets a call through that gives something back to the host.
  template <class Work>
  void letGo(const char* call, Work work) {
    const Fault fault = next(call);
    work();
    if (fault == Fault::exception || fault == Fault::lateException) throw InjectedFault(call);
  }

 private:
  Fault next(const char* call);

  Fault plannedFault = Fault::none;
  std::uint64_t faultNumber = 0;
  std::uint64_t count = 0;
  std::string spoiled;
  std::vector<std::string> complaints;
};

/// An object of the host that the module may call until its end. It is kept beyond that, so that a
/// call that comes too late is noted instead of reading memory that is gone.
class HostObject {
 public:
  HostObject(Switchboard& switchboard, const char* kind) : board(switchboard), kindOfObject(kind) {}
  HostObject(const HostObject&) = delete;
  HostObject& operator=(const HostObject&) = delete;

  void end() { over = true; }
  bool isOver() const { return over; }

 protected:
  ~HostObject() = default;

  template <class... Works>
  auto answer(const char* call, Works... works) const {
    complainWhenOver(call);
    return board.answer(call, works...);
  }
  template <class Work>
  void letGo(const char* call, Work work) const {
    complainWhenOver(call);
    board.letGo(call, work);
  }

  Switchboard& board;

 private:
  void complainWhenOver(const char* call) const {
    if (over) board.complain(std::string(call) + " of a " + kindOfObject + " that was over");
  }

  const char* kindOfObject;
  bool over = false;
};

}  // namespace foreign
