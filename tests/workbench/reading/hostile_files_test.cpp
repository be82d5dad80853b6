// Survey files as they come, and as they shouldn't: each is read right, or refused for its reason.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "workbench/reading/byte_sources.h"
#include "workbench/reading/outcome_text.h"

namespace {

using tiepoint::testing::outcomeText;
using tiepoint::testing::readBytes;
using tiepoint::testing::wideBytes;

struct Row {
  const char* what;
  std::string bytes;
  const char* outcome;
};

void expectAll(const std::vector<Row>& rows) {
  for (const Row& row : rows) EXPECT_EQ(outcomeText(readBytes(row.bytes)), row.outcome) << row.what;
}

/// Text with zero bytes in it.
template <std::size_t size>
std::string bytes(const char (&text)[size]) {
  return std::string(text, size - 1);
}

const std::string utf8Mark = "\xEF\xBB\xBF";
const std::string littleMark = "\xFF\xFE";
const std::string bigMark = "\xFE\xFF";

TEST(HostileFiles, WithoutContent) {
  expectAll({
      {"empty", "", "empty"},
      {"a mark alone", utf8Mark, "none: no lines"},
      {"a wide mark alone", littleMark, "none: no lines"},
      {"one line feed", "\n", "none: no lines"},
      {"blanks", "  \t \r\n   ", "none: no lines"},
      {"comments", "# a\n// b\n% c\n! d\n", "none: no lines"},
      {"separators", ";;;\n,,,\n", "none: no lines"},
      {"the end of file of DOS", "\x1A", "none: no lines"},
      {"a header alone", "Name;X;Y;Z\n", "none: no lines in line 1"},
      {"a header and comments", "Name;X;Y;Z\n# a\n", "none: no lines in line 1"},
      {"the spreadsheet's line alone", "sep=;\n", "none: no lines"},
  });
}

TEST(HostileFiles, ThatAreNoText) {
  expectAll({
      {"a program",
       bytes("\x7F"
             "ELF\0\1\2\3"),
       "none: binary in line 1"},
      {"one zero byte", bytes("A 1 2 3\nB 1 2\0 3\n"), "none: binary in line 2"},
      {"zeros", std::string(10000, '\0'), "none: binary in line 1"},
      {"an image", bytes("\x89PNG\r\n\x1A\n\0\0\0\rIHDR"), "none: binary in line 3"},
      {"an archive", "PK\3\4\x14", "none: too few fields in line 1: 1"},
      {"a web page", "<html>\n<body>\n</html>\n", "none: too few fields in line 1: 1"},
      {"JSON", "{\"x\": 1, \"y\": 2}\n", "none: too few fields in line 1: 1"},
      {"prose", "The targets of station one\nwere measured on Monday\n",
       "none: columns in line 1: unknown words 'The' 'targets' 'of' 'station' 'one'"},
  });
}

TEST(HostileFiles, InEveryEncoding) {
  const std::string lines = "Name;X;Y;Z\r\nA;1,5;2;3\r\n";
  expectAll({
      {"UTF-8 with a mark", utf8Mark + lines, "UTF-8 semicolon decimal-comma name,x,y,z | A 1.5 2 3"},
      {"UTF-16LE", littleMark + wideBytes(lines), "UTF-16LE semicolon decimal-comma name,x,y,z | A 1.5 2 3"},
      {"UTF-16BE", bigMark + wideBytes(lines, true), "UTF-16BE semicolon decimal-comma name,x,y,z | A 1.5 2 3"},
      {"UTF-16LE without a mark", wideBytes(lines), "UTF-16LE semicolon decimal-comma name,x,y,z | A 1.5 2 3"},
      {"UTF-16BE without a mark", wideBytes(lines, true), "UTF-16BE semicolon decimal-comma name,x,y,z | A 1.5 2 3"},
      {"UTF-16 with half a character", littleMark + wideBytes("A 1 2 3\nB 1 2 3") + "1",
       "faulty 1: 2.4 no-number '3�'"},
      {"UTF-16 with half a pair in a name", littleMark + wideBytes("A") + "\x3D\xD8" + wideBytes(" 1 2 3\n"),
       "faulty 1: 1 bad-encoding 'A�'"},
      {"UTF-8 names", "Höhe 1 2 3\nТ1 1 2 3\n測站 1 2 3\n",
       "UTF-8 blank name,x,y,z | Höhe 1 2 3 | Т1 1 2 3 | 測站 1 2 3"},
      {"windows-1251 names", "\xCF\xF3\xED\xEA\xF2 1 2 3\n", "windows-1251 blank name,x,y,z | Пункт 1 2 3"},
      {"windows-1252 names", "H\xF6he 1 2 3\n", "windows-1252 blank name,x,y,z | Höhe 1 2 3"},
      {"short names of either code page",
       "\xD2"
       "1 1 2 3\n",
       "ambiguous encoding: windows-1251 windows-1252"},
      {"UTF-8 and windows-1251", "Т1 1 2 3\n\xCF\xF3\xED\xEA\xF2 1 2 3\n",
       "ambiguous encoding: UTF-8 windows-1251 windows-1252"},
      {"a marked file with other bytes", utf8Mark + "A\xF6 1 2 3\nB 1 2 3\n", "faulty 1: 1 bad-encoding 'A�'"},
      {"UTF-8 cut off inside a character", utf8Mark + "A\xC3 1 2 3\n", "faulty 1: 1 bad-encoding 'A�'"},
      {"an overlong slash", utf8Mark + "A\xC0\xAF 1 2 3\n", "faulty 1: 1 bad-encoding 'A��'"},
      {"high bytes in a comment", "# \xFF\nA 1 2 3\n", "ASCII blank name,x,y,z | A 1 2 3"},
      {"a mark in the middle", "A 1 2 3\n" + utf8Mark + "B 1 2 3\n",
       "UTF-8 blank name,x,y,z | A 1 2 3 | \xEF\xBB\xBF"
       "B 1 2 3"},
  });
}

TEST(HostileFiles, WithEveryLineEnd) {
  expectAll({
      {"LF", "A 1 2 3\nB 1 2 3\n", "ASCII blank name,x,y,z | A 1 2 3 | B 1 2 3"},
      {"CR LF", "A 1 2 3\r\nB 1 2 3\r\n", "ASCII blank name,x,y,z | A 1 2 3 | B 1 2 3"},
      {"CR", "A 1 2 3\rB 1 2 3\r", "ASCII blank name,x,y,z | A 1 2 3 | B 1 2 3"},
      {"mixed", "A 1 2 3\rB 1 2 3\nC 1 2 3\r\nD 1 2 3",
       "ASCII blank name,x,y,z | A 1 2 3 | B 1 2 3 | C 1 2 3 | D 1 2 3"},
      {"CR CR LF", "A 1 2 3\r\r\nB 1 2 3\r\r\n", "ASCII blank name,x,y,z | A 1 2 3 | B 1 2 3"},
      {"none at the end", "A 1 2 3", "ASCII blank name,x,y,z | A 1 2 3"},
      {"the end of file of DOS", "A 1 2 3\r\n\x1A", "ASCII blank name,x,y,z | A 1 2 3"},
      {"blank lines in between", "\n\nA 1 2 3\n \n\nB 1 2 3\n\n", "ASCII blank name,x,y,z | A 1 2 3 | B 1 2 3"},
      {"a form feed", "A 1 2 3\n\f\nB 1 2 3\n", "ASCII blank name,x,y,z | A 1 2 3 | B 1 2 3"},
      {"a line that is too long", std::string((1u << 20) + 1, '1'), "faulty 1: 1 too-long"},
      {"a line that is too long behind others", "A 1 2 3\n" + std::string((1u << 20) + 1, ' '), "faulty 1: 2 too-long"},
      {"a longest line", "A 1 2 3" + std::string((1u << 20) - 7, ' ') + "\n", "ASCII blank name,x,y,z | A 1 2 3"},
  });
}

TEST(HostileFiles, WithEverySeparator) {
  expectAll({
      {"blanks", "A  1   2 3\n", "ASCII blank name,x,y,z | A 1 2 3"},
      {"tabs", "A\t1\t2\t3\n", "ASCII tab name,x,y,z | A 1 2 3"},
      {"commas", "A,1,2,3\n", "ASCII comma name,x,y,z | A 1 2 3"},
      {"semicolons", "A;1;2;3\n", "ASCII semicolon name,x,y,z | A 1 2 3"},
      {"tabs and blanks", "A \t 1\t2 3\n", "ASCII blank name,x,y,z | A 1 2 3"},
      {"commas and blanks", "A, 1, 2, 3\n", "ASCII comma name,x,y,z | A 1 2 3"},
      {"a mixture", "A 1, 2; 3\n", "ASCII mixed name,x,y,z | A 1 2 3"},
      {"another on each line", "A 1 2 3\nB,1,2,3\nC;1;2;3\n", "ASCII mixed name,x,y,z | A 1 2 3 | B 1 2 3 | C 1 2 3"},
      {"one at the end", "A;1;2;3;\nB;1;2;3;\n", "ASCII semicolon name,x,y,z | A 1 2 3 | B 1 2 3"},
      {"some at the end", "A;1;2;3;;;\nB;1;2;3;;;\n", "ASCII semicolon name,x,y,z | A 1 2 3 | B 1 2 3"},
      {"one at the beginning", ",A,1,2,3\n", "none: nothing fits in line 1: 1.1 empty-name"},
      {"an empty number", "A;1;;3\n", "none: nothing fits in line 1: 1.3 no-number"},
      {"rows that a spreadsheet left empty", "A;1;2;3\n;;;\n;;;\n", "ASCII semicolon name,x,y,z | A 1 2 3"},
      {"the spreadsheet's line", "sep=;\nA;1;2;3\n", "ASCII semicolon name,x,y,z | A 1 2 3"},
      {"the spreadsheet's line for a tab", "\"sep=\t\"\nA\t1\t2\t3\n", "ASCII tab name,x,y,z | A 1 2 3"},
      {"a bar", "A|1|2|3\n", "none: too few fields in line 1: 1"},
      {"a colon", "A:1:2:3\n", "none: too few fields in line 1: 1"},
  });
}

TEST(HostileFiles, WithEveryWayOfWritingNumbers) {
  expectAll({
      {"decimal commas between blanks", "A 1,5 2,25 3\n", "ASCII blank decimal-comma name,x,y,z | A 1.5 2.25 3"},
      {"decimal commas between tabs", "A\t1,5\t2,25\t3\n", "ASCII tab decimal-comma name,x,y,z | A 1.5 2.25 3"},
      {"decimal commas in quotes", "A,\"1,5\",\"2,25\",\"3\"\n", "ASCII comma decimal-comma name,x,y,z | A 1.5 2.25 3"},
      {"decimal commas without names", "1,5 2,25 3,0\n", "ASCII blank decimal-comma x,y,z | ? 1.5 2.25 3"},
      {"both decimal marks", "A;1,5;2;3\nB;1.5;2;3\n", "faulty 1: 1.2 no-number '1,5'"},
      {"thousands behind a decimal comma", "A;1.234,5;2,5;3\n",
       "none: nothing fits in line 1: 1.2 thousands '1.234,5'"},
      {"thousands before a decimal point", "A;1,234.5;2.5;3\nB;1;2;3\n", "faulty 1: 1.2 thousands '1,234.5'"},
      {"Swiss thousands", "A;1'234.5;2.5;3\nB;1;2;3\n", "faulty 1: 1.2 thousands '1'234.5'"},
      {"blank thousands", "A\t1 234,5\t2,5\t3\nB\t1,5\t2\t3\n", "faulty 1: 1.2 thousands '1 234,5'"},
      {"commas that may be thousands", "A;1,234;5,678;9,012\n", "ambiguous commas"},
      {"exponents", "A 1e3 -2.5E-1 +3\n", "ASCII blank name,x,y,z | A 1000 -0.25 3"},
      {"not a number", "Name X Y Z\nA nan 2 3\n", "faulty 1: 2.2 not-finite 'nan'"},
      {"infinity", "Name X Y Z\nA 1 -inf 3\n", "faulty 1: 2.3 not-finite '-inf'"},
      {"too large", "Name X Y Z\nA 1 1e999 3\n", "faulty 1: 2.3 out-of-range '1e999'"},
      {"hexadecimal", "Name X Y Z\nA 1 0x10 3\n", "faulty 1: 2.3 no-number '0x10'"},
      {"a formula", "Name;X;Y;Z\nA;1;=B1+2;3\n", "faulty 1: 2.3 no-number '=B1+2'"},
      {"a spreadsheet's complaint", "Name;X;Y;Z\nA;1;#WERT!;3\n", "faulty 1: 2.3 no-number '#WERT!'"},
      {"units", "Name;X;Y;Z\nA;1m;2m;3m\n", "faulty 1: 2.2 no-number '1m'"},
      {"a minus of typography",
       "Name;X;Y;Z\nA;\xE2\x88\x92"
       "1;2;3\n",
       "faulty 1: 2.2 no-number '\xE2\x88\x92"
       "1'"},
      {"a million digits", "Name;X;Y;Z\nA;1." + std::string(100000, '0') + ";2;3\n",
       "ASCII semicolon name,x,y,z | A 1 2 3"},
  });
}

TEST(HostileFiles, WithEveryKindOfName) {
  expectAll({
      {"blanks", "Point 1;1;2;3\n", "ASCII semicolon name,x,y,z | Point 1 1 2 3"},
      {"blanks in quotes", "\"Point 1\" 1 2 3\n", "ASCII blank name,x,y,z | Point 1 1 2 3"},
      {"blanks between blanks", "Point A 1 2 3\n", "none: nothing fits in line 1: 1.2 no-number 'A'"},
      {"a number behind a blank", "Point 1 1 2 3\n", "ambiguous: blank name,x,y,z,w blank name,x,y,z,-"},
      {"separators in quotes", "\"A, B; C\",1,2,3\n", "ASCII comma name,x,y,z | A, B; C 1 2 3"},
      {"quotes in quotes", "\"6\"\" pipe\",1,2,3\n", "ASCII comma name,x,y,z | 6\" pipe 1 2 3"},
      {"a quote that stays open", "Name,X,Y,Z\nA,1,2,3\n\"B,1,2,3\n", "faulty 1: 3.1 open-quote 'B,1,2,3'"},
      {"text behind a quote", "Name,X,Y,Z\n\"A\"x,1,2,3\n", "faulty 1: 2.1 text-after-quote 'A'"},
      {"leading zeros", "Name X Y Z\n007 1 2 3\n7 1 2 3\n", "ASCII blank name,x,y,z | 007 1 2 3 | 7 1 2 3"},
      {"no name", "Name,X,Y,Z\n,1,2,3\n", "faulty 1: 2.1 empty-name"},
      {"a name of blanks", "Name,X,Y,Z\n\"  \",1,2,3\n", "faulty 1: 2.1 empty-name '  '"},
      {"a question mark", "Name,X,Y,Z\n?,1,2,3\n", "ASCII comma name,x,y,z | ? 1 2 3"},
      {"a name with a control character", "A\x1B[2J;1;2;3\n", "ASCII semicolon name,x,y,z | A\x1B[2J 1 2 3"},
      {"numbers for names", "101,1,2,3\n102,1,2,3\n", "ambiguous: comma name,x,y,z comma x,y,z,w comma x,y,z,-"},
      {"a name behind the coordinates", "1 2 3 A\n", "none: nothing fits in line 1: 1.4 no-number 'A'"},
      {"a comma that nothing divides at", "Name X Y Z\nA,B 1 2 3\n", "faulty 1: 2.1 separator-in-name 'A,B'"},
      {"a very long name", "Name X Y Z\n" + std::string(100000, 'A') + " 1 2 x\n", "faulty 1: 2.4 no-number 'x'"},
  });
}

TEST(HostileFiles, WithEveryKindOfColumn) {
  expectAll({
      {"a code", "A,1,2,3,wall\n", "none: nothing fits in line 1: 1.5 no-number 'wall'"},
      {"a code under a header", "Name,X,Y,Z,Code\nA,1,2,3,wall\n", "ASCII comma name,x,y,z,- | A 1 2 3"},
      {"deviations", "A,1,2,3,0.1,0.1,0.1\n", "none: too many fields in line 1: 7"},
      {"deviations under a header", "Name,X,Y,Z,sx,sy,sz\nA,1,2,3,0.1,0.1,0.1\n",
       "ASCII comma name,x,y,z,-,-,- | A 1 2 3"},
      {"a weight or a deviation", "A,1,2,3,0.1\n", "ambiguous: comma name,x,y,z,w comma name,x,y,z,-"},
      {"a weight under a header", "Name,X,Y,Z,W\nA,1,2,3,0.1\n",
       "ASCII comma name,x,y,z,w | A 1 2 3 w0.10000000000000001"},
      {"two coordinates", "A 1 2\n", "none: nothing fits in line 1: 1.1 no-number 'A'"},
      {"one field", "A\nB\n", "none: too few fields in line 1: 1"},
      {"lines of different lengths", "A 1 2 3\nB 1 2 3 4 5\nC 1 2 3\nD 1\n",
       "faulty 2: 2 count '6' not 4 4 count '2' not 4"},
      {"a header in the middle", "Name,X,Y,Z\nA,1,2,3\nName,X,Y,Z\nB,1,2,3\n", "faulty 1: 3.2 no-number 'X'"},
      {"a title above the header", "Hall 7\nName,X,Y,Z\nA,1,2,3\nB,1,2,3\n",
       "faulty 2: 1 count '1' not 4 2.2 no-number 'X'"},
      {"a header of other length", "Name,X,Y,Z,Code\nA,1,2,3\n", "faulty 1: 2 count '4' not 5"},
      {"latitudes", "Name,Lat,Lon,H\nA,1,2,3\n", "none: columns in line 1: no x 'Name' 'Lat' 'Lon' 'H'"},
      {"an unknown header", "a;b;c;q\nA;1;2;3\n", "none: columns in line 1: unknown words 'a' 'b' 'c' 'q'"},
      {"two names", "No,Name,X,Y,Z\n1,A,1,2,3\n", "none: columns in line 1: doubled 'No' 'Name'"},
      {"units under blanks", "Name X [m] Y [m] Z [m]\nA 1 2 3\n", "ASCII blank name,x,y,z | A 1 2 3"},
      {"a header in UTF-16", littleMark + wideBytes("Name\tE\tN\tH\r\nA 1\t1\t2\t3\r\n"),
       "UTF-16LE tab name,x,y,z | A 1 1 2 3"},
  });
}

TEST(HostileFiles, WithEveryKindOfComment) {
  expectAll({
      {"number signs", "# a\nA 1 2 3\n#B 1 2 3\n", "ASCII blank name,x,y,z | A 1 2 3"},
      {"slashes", "// a\nA 1 2 3\n", "ASCII blank name,x,y,z | A 1 2 3"},
      {"percent and exclamation", "% a\n! b\nA 1 2 3\n", "ASCII blank name,x,y,z | A 1 2 3"},
      {"semicolons above blanks", "; a\nA 1 2 3\n", "ASCII blank name,x,y,z | A 1 2 3"},
      {"semicolons above commas", "; a, b\nA,1,2,3\n;B,1,2,3\n", "ASCII comma name,x,y,z | A 1 2 3"},
      {"semicolons that divide", ";1;2;3\nA;1;2;3\nB;1;2;3\n", "faulty 1: 1.1 empty-name"},
      {"indented", "   # a\nA 1 2 3\n", "ASCII blank name,x,y,z | A 1 2 3"},
      {"behind a point", "Name X Y Z\nA 1 2 3 # a\n", "faulty 1: 2 count '6' not 4"},
      {"a quoted number sign", "\"#1\",1,2,3\n", "ASCII comma name,x,y,z | #1 1 2 3"},
      {"a header in a comment", "# Name N E H\nA 2 1 3\n", "ASCII blank name,y,x,z | A 1 2 3"},
  });
}

// Taken for a mere comment, each of these would swap north and east without a word.
TEST(HostileFiles, WithAHeaderInEveryKindOfComment) {
  expectAll({
      {"behind a semicolon", "; Name N E H\nA 2 1 3\n", "ASCII blank name,y,x,z | A 1 2 3"},
      {"behind a semicolon and a comment", "# hall\n; Name,N,E,H\nA,2,1,3\n", "ASCII comma name,y,x,z | A 1 2 3"},
      {"below a semicolon's comment", "; hall\n# Name N E H\nA 2 1 3\n", "ASCII blank name,y,x,z | A 1 2 3"},
      {"above a semicolon's comment", "# Name N E H\n; hall\nA 2 1 3\n", "ASCII blank name,x,y,z | A 2 1 3"},
      {"above another comment", "# Name N E H\n# hall\nA 2 1 3\n", "ASCII blank name,x,y,z | A 2 1 3"},
      {"among the points", "A 2 1 3\n# Name N E H\nB 2 1 3\n", "ASCII blank name,x,y,z | A 2 1 3 | B 2 1 3"},
      {"behind a semicolon that divides", "; Name;N;E;H\nA;2;1;3\n", "faulty 1: 2 count '4' not 5"},
      {"the number sign above the names", "#;N;E;H\nA;2;1;3\n", "ASCII semicolon name,y,x,z | A 1 2 3"},
      {"the number sign above numbers", "#,N,E,H\n7,2,1,3\n", "ASCII comma name,y,x,z | 7 1 2 3"},
      {"the number sign and blanks above a name", "# N E H\nA 2 1 3\n", "ASCII blank name,y,x,z | A 1 2 3"},
      {"the number sign and blanks above numbers", "# X Y Z\n1 2 3 4\n",
       "ambiguous: blank name,x,y,z blank x,y,z,w blank x,y,z,-"},
      {"another mark above a name", "% N E H\nA 2 1 3\n", "ASCII blank name,x,y,z | A 2 1 3"},
      {"commas and blanks above blanks", "# Name, N, E, H\nA 2 1 3\n", "ASCII blank name,y,x,z | A 1 2 3"},
      {"semicolons above blanks", "# Point ID;Northing;Easting;Height\nA 2 1 3\n", "ASCII blank name,y,x,z | A 1 2 3"},
      {"tabs above commas", "# Point ID\tNorthing\tEasting\tHeight\nA,2,1,3\n", "ASCII comma name,y,x,z | A 1 2 3"},
  });
}

}  // namespace
