#include "files/path_of_text.h"

#include <boost/locale/encoding_utf.hpp>
#include <type_traits>

namespace ZOR::reg {

namespace {

template <class Character>
std::basic_string<Character> inCharactersOf(const std::wstring& text) {
  if constexpr (std::is_same_v<Character, wchar_t>) {
    return text;
  } else {
    return boost::locale::conv::utf_to_utf<Character>(text, boost::locale::conv::stop);
  }
}

}  // namespace

boost::filesystem::path pathOfText(const std::wstring& text) {
  return boost::filesystem::path(inCharactersOf<boost::filesystem::path::value_type>(text));
}

}  // namespace ZOR::reg
