// The text of a console.
#pragma once

namespace tiepoint::workbench::cli {

/// While it stands, a console shows what this program writes as UTF-8. Consoles of Windows have to be
/// told, and get their own code page back; others do so anyhow.
class Utf8Console {
 public:
  Utf8Console();
  ~Utf8Console();
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;

 private:
  /// 0 for no console that has to be told.
  unsigned codePageBefore = 0;
};

}  // namespace tiepoint::workbench::cli
