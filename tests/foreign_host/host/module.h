// The registration module in this host.
#pragma once

#include <filesystem>
#include <memory>

#include "host.h"
#include "library.h"
#include "platform/sdk/od_rx_module.h"
#include "session/i_multi_registrator.h"

namespace foreign {

inline constexpr const wchar_t* importCommand = L"TSL_REG_IMPORT_REFS";

/// The library, loaded as long as this object stands, and its module object, started.
class Module {
 public:
  /// Throws std::runtime_error when the file isn't such a module.
  Module(Host& host, const std::filesystem::path& file);
  /// Also forgets the module's command. No session may stand any more.
  ~Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  /// What the module gives: null is possible.
  std::unique_ptr<ZOR::reg::iMultiRegistrator> newSession() const;

 private:
  void start();

  Host& host;
  LibraryHandle library;
  OdRxModule* object = nullptr;
  ZOR::reg::GetMultiRegistratorFunction getRegistrator = nullptr;
};

}  // namespace foreign
