#include "support/hostile_locale.h"

#include <stdlib.h>

#include <algorithm>
#include <array>
#include <boost/filesystem/fstream.hpp>
#include <boost/filesystem/operations.hpp>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cwchar>

namespace tiepoint::testing {
namespace {

namespace fs = boost::filesystem;

template <class Character>
class CommaAndGroups : public std::numpunct<Character> {
  Character do_decimal_point() const override { return ','; }
  Character do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

class BlanksAbove0x7F : public std::ctype<char> {
 public:
  BlanksAbove0x7F() : std::ctype<char>(table()) {}

 private:
  static const mask* table() {
    static const std::array<mask, table_size> masks = [] {
      std::array<mask, table_size> changed{};
      const auto& classic = std::use_facet<std::ctype<char>>(std::locale::classic());
      for (std::size_t byte = 0; byte < 0x80; ++byte) {
        const char character = static_cast<char>(byte);
        classic.is(&character, &character + 1, &changed[byte]);
      }
      std::fill(changed.begin() + 0x80, changed.end(), static_cast<mask>(space));
      return changed;
    }();
    return masks.data();
  }
  char do_tolower(char character) const override { return character; }
  const char* do_tolower(char*, const char* end) const override { return end; }
};

class NumberSigns : public std::ctype<wchar_t> {
  wchar_t do_widen(char) const override { return L'#'; }
  const char* do_widen(const char* begin, const char* end, wchar_t* to) const override {
    std::wmemset(to, L'#', static_cast<std::size_t>(end - begin));
    return end;
  }
  char do_narrow(wchar_t, char) const override { return '#'; }
};

template <class Character>
class NoConversion : public std::codecvt<Character, char, std::mbstate_t> {
  using Base = std::codecvt<Character, char, std::mbstate_t>;
  using typename Base::result;

  result do_out(std::mbstate_t&, const Character* from, const Character*, const Character*& fromNext, char* to, char*,
                char*& toNext) const override {
    fromNext = from;
    toNext = to;
    return Base::error;
  }
  result do_in(std::mbstate_t&, const char* from, const char*, const char*& fromNext, Character* to, Character*,
               Character*& toNext) const override {
    fromNext = from;
    toNext = to;
    return Base::error;
  }
  bool do_always_noconv() const noexcept override { return false; }
};

std::locale hostileGlobalLocale() {
  std::locale locale(std::locale::classic(), new CommaAndGroups<char>);
  locale = std::locale(locale, new CommaAndGroups<wchar_t>);
  locale = std::locale(locale, new BlanksAbove0x7F);
  locale = std::locale(locale, new NumberSigns);
  locale = std::locale(locale, new NoConversion<char>);
  return std::locale(locale, new NoConversion<wchar_t>);
}

#ifndef _WIN32

/// One byte, one character, so that the locale needs none of the system's sources.
constexpr const char* charmapHead = "<code_set_name> BYTES\n<mb_cur_min> 1\n<mb_cur_max> 1\n<escape_char> /\nCHARMAP\n";

constexpr const char* localeSource =
    "escape_char /\n"
    "LC_CTYPE\n"
    "space <U0009>;<U000A>;<U000B>;<U000C>;<U000D>;<U0020>;<U0085>;<U00A0>\n"
    "END LC_CTYPE\n"
    "LC_NUMERIC\n"
    "decimal_point \",\"\n"
    "thousands_sep \".\"\n"
    "grouping 3;3\n"
    "END LC_NUMERIC\n";

void writeSources(const fs::path& folder) {
  fs::ofstream charmap(folder / "bytes.charmap");
  charmap << charmapHead;
  for (int byte = 0; byte < 256; ++byte) {
    std::array<char, 32> line{};
    std::snprintf(line.data(), line.size(), "<U%04X> /x%02x\n", static_cast<unsigned>(byte),
                  static_cast<unsigned>(byte));
    charmap << line.data();
  }
  charmap << "END CHARMAP\n";
  fs::ofstream(folder / "hostile.source") << localeSource;
}

/// Compiles the locale and takes it; the folder isn't needed after that.
bool spoilCLibrary() {
  const fs::path folder = fs::temp_directory_path() / fs::unique_path("tiepoint-locale-%%%%%%%%%%%%");
  fs::create_directory(folder);
  writeSources(folder);
  const std::string in = "cd '" + folder.string() + "' && ";
  // localedef warns of every category that it has to leave empty.
  const bool isCompiled =
      std::system((in + "localedef -c -i hostile.source -f bytes.charmap ./hostile >/dev/null 2>&1; test -d hostile")
                      .c_str()) == 0;
  if (isCompiled) setenv("LOCPATH", folder.c_str(), 1);
  const bool isTaken =
      isCompiled && std::setlocale(LC_CTYPE, "hostile") != nullptr && std::setlocale(LC_NUMERIC, "hostile") != nullptr;
  unsetenv("LOCPATH");
  fs::remove_all(folder);
  return isTaken;
}

#else

bool spoilCLibrary() { return std::setlocale(LC_ALL, "German_Germany.1252") != nullptr; }

#endif

}  // namespace

HostileLocale::HostileLocale() : cLibraryBefore(std::setlocale(LC_ALL, nullptr)), cLibraryHasIt(spoilCLibrary()) {
  pathsBefore = fs::path::imbue(std::locale::classic());
  globalBefore = std::locale::global(hostileGlobalLocale());
}

HostileLocale::~HostileLocale() {
  std::locale::global(globalBefore);
  fs::path::imbue(pathsBefore);
  std::setlocale(LC_ALL, cLibraryBefore.c_str());
}

}  // namespace tiepoint::testing
