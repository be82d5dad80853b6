// Exports of instruments and office programs: what they mean is read, and what they don't say is asked for.
#include <gtest/gtest.h>

#include <string>

#include "workbench/reading/byte_sources.h"
#include "workbench/reading/outcome_text.h"

namespace {

using tiepoint::testing::outcomeText;
using tiepoint::testing::readBytes;

struct Row {
  const char* what;
  std::string bytes;
  const char* outcome;
};

template <std::size_t count>
void expectAll(const Row (&rows)[count]) {
  for (const Row& row : rows) EXPECT_EQ(outcomeText(readBytes(row.bytes)), row.outcome) << row.what;
}

TEST(Exports, OfInstruments) {
  const Row rows[] = {
      {"number, northing, easting, height, code in words", "TP1,5,7,3,BM\nTP2,6,8,3,MH\n",
       "none: nothing fits in line 1: 1.5 no-number 'BM'"},
      {"the same with codes left empty", "TP1,5,7,3,\nTP2,6,8,3,\n", "ASCII comma name,x,y,z | TP1 5 7 3 | TP2 6 8 3"},
      {"the same with a header", "Point ID,Northing,Easting,Elevation,Code\nTP1,5,7,3,BM\nTP2,6,8,3,\n",
       "ASCII comma name,y,x,z,- | TP1 7 5 3 | TP2 8 6 3"},
      {"a fixed-word format", "110001+00000TP1 81..00+00005000 82..00+00007000 83..00+00003000\n",
       "none: nothing fits in line 1: 1.2 no-number '81..00+00005000'"},
      {"degrees",
       "Name;X;Y;Z\nA;52\xC2\xB0"
       "30'15\";13.4;35\n",
       "faulty 1: 2.2 no-number '52\xC2\xB0"
       "30'15\"'"},
      {"angles and distances", "Pt;Hz;V;SD\nA;100.5;99.5;25\n", "none: columns in line 1: no x 'Pt' 'Hz' 'V' 'SD'"},
      {"deviations in columns between", "Nr;E;sE;N;sN;H;sH\n7;1;0.01;2;0.02;3;0.03\n",
       "ASCII semicolon name,x,-,y,-,z,- | 7 1 2 3"},
      {"heights that weren't measured", "Name;X;Y;Z\nA;1;2;\nB;1;2;3\n", "faulty 1: 2.4 no-number"},
      {"a dash for what wasn't measured", "Name;X;Y;Z\nA;1;2;-\nB;1;2;3\n", "faulty 1: 2.4 no-number '-'"},
      {"a line of units", "Name;X;Y;Z\n-;m;m;m\nA;1;2;3\n", "faulty 1: 2.2 no-number 'm'"},
      {"a page's header again", "Name X Y Z\nA 1 2 3\n\fName X Y Z\nB 1 2 3\n", "faulty 1: 3.2 no-number 'X'"},
      {"a sum at the end", "Name;X;Y;Z\nA;1;2;3\nTotal: 1\n", "faulty 1: 3 count '1' not 4"},
  };
  expectAll(rows);
}

TEST(Exports, OfRussianAndGermanPrograms) {
  const Row rows[] = {
      {"Russian, north first",
       "\xB9 \xF2\xEE\xF7\xEA\xE8;\xD1\xE5\xE2\xE5\xF0;\xC2\xEE\xF1\xF2\xEE\xEA;\xC2\xFB\xF1\xEE\xF2\xE0\n"
       "\xD2"
       "1;5,5;7,5;3\n",
       "windows-1251 semicolon decimal-comma name,y,x,z | Т1 7.5 5.5 3"},
      {"Russian letters for axes", "№\tХ\tУ\tН\nТ1\t1,5\t2\t3\n", "UTF-8 tab decimal-comma name,x,y,z | Т1 1.5 2 3"},
      {"German, height in front", "Höhe;Rechtswert;Hochwert;PktNr\n3;1,5;2;007\n",
       "UTF-8 semicolon decimal-comma z,x,y,name | 007 1.5 2 3"},
      {"German letters", "Nr;R;H;Z\n7;1;2;3\n", "ASCII semicolon name,x,y,z | 7 1 2 3"},
      {"German thousands", "Nr;R;H;Z\n7;4.512.345,6;5.412.345,6;35\n", "faulty 1: 2.2 thousands '4.512.345,6'"},
      {"thousands with no-break blanks",
       "Nr;R;H;Z\n7;4\xC2\xA0"
       "512,5;5;3,5\n8;1;1;1\n",
       "faulty 1: 2.2 thousands '4\xC2\xA0"
       "512,5'"},
      {"thousands with narrow no-break blanks",
       "Nr;R;H;Z\n7;4\xE2\x80\xAF"
       "512,5;5;3,5\n8;1;1;1\n",
       "faulty 1: 2.2 thousands '4\xE2\x80\xAF"
       "512,5'"},
  };
  expectAll(rows);
}

TEST(Exports, WithCharactersThatNobodySees) {
  const Row rows[] = {
      {"a no-break blank between fields",
       "A\xC2\xA0"
       "1\xC2\xA0"
       "2\xC2\xA0"
       "3\n",
       "none: too few fields in line 1: 1"},
      {"a zero-width blank in a number",
       "Name;X;Y;Z\nA;\xE2\x80\x8B"
       "1;2;3\n",
       "faulty 1: 2.2 no-number '\xE2\x80\x8B"
       "1'"},
      {"a mark inside, before a header", "# a\n\xEF\xBB\xBFName;N;E;H\nA;2;1;3\n",
       "none: columns in line 2: name unclear '\xEF\xBB\xBFName'"},
      {"a mark inside, before a number",
       "1 2 3\n\xEF\xBB\xBF"
       "4 5 6\n",
       "faulty 1: 2.1 no-number '\xEF\xBB\xBF"
       "4'"},
      {"DOS' end of file, and more behind it", "A 1 2 3\n\x1A\nB 1 2 3\n", "faulty 1: 2 count '1' not 4"},
      {"UTF-32", std::string("\xFF\xFE\0\0A\0\0\0 \0\0\0", 12), "none: binary in line 1"},
  };
  expectAll(rows);
}

std::string thousandAndOne(const std::string& line, const std::string& last) {
  std::string text;
  for (int i = 0; i < 1000; ++i) text += line + "\n";
  return text + last + "\n";
}

TEST(Exports, WhoseOnlyBadLineStandsBehindTheLook) {
  const Row rows[] = {
      {"another separator", thousandAndOne("A 1 2 3", "A;1;2;3"), "faulty 1: 1001 count '1' not 4"},
      {"another decimal mark", thousandAndOne("A 1 2 3", "A 1,5 2 3"), "faulty 1: 1001.2 no-number '1,5'"},
      {"one field more", thousandAndOne("1;2;3", "A;1;2;3"), "faulty 1: 1001 count '4' not 3"},
      {"one field less", thousandAndOne("A;1;2;3", "A;1;2"), "faulty 1: 1001 count '3' not 4"},
      {"an empty coordinate", thousandAndOne("A;1;2;3", "A;1;2;"), "faulty 1: 1001.4 no-number"},
      {"a decimal comma in a mixture", thousandAndOne("A 1, 2 3", "A 1,5 2"), "faulty 1: 1001 count '3' not 4"},
      {"a zero byte", thousandAndOne("A 1 2 3", std::string("A 1 2 3\0", 8)), "faulty 1: 1001 zero-byte"},
      {"an open quote", thousandAndOne("A;1;2;3", "\"A;1;2;3"), "faulty 1: 1001.1 open-quote 'A;1;2;3'"},
      {"a header", thousandAndOne("A 1 2 3", "Name N E H"), "faulty 1: 1001.2 no-number 'N'"},
      {"thousands", thousandAndOne("A;1.5;2;3", "A;1,234.5;2;3"), "faulty 1: 1001.2 thousands '1,234.5'"},
  };
  expectAll(rows);
}

}  // namespace
