// The command line itself: help, mistakes, and where output goes.
#include <gmock/gmock.h>

#include <sstream>

#include "workbench/cli/survey_files.h"

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using tiepoint::testing::onWindows;

class Usage : public SurveyFiles {
 protected:
  /// The one line that a mistake gets.
  std::string mistake(const std::vector<std::string>& arguments) {
    const ProcessResult result = run(arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.out, IsEmpty());
    return result.err;
  }
};

TEST_F(Usage, HelpOfEveryCommandLeadsWithExamplesAndTellsTheExitStatuses) {
  for (const std::string command : {"register", "import", "groups", "clouds", "render", "rpc"}) {
    const ProcessResult result = run({command, "--help"});
    EXPECT_EQ(result.status, 0) << command;
    EXPECT_THAT(result.err, IsEmpty());
    const std::size_t examples = result.out.find("Examples:\n  ");
    ASSERT_NE(examples, std::string::npos) << command;
    EXPECT_LT(examples, result.out.find("Options:")) << command;
    EXPECT_THAT(result.out, HasSubstr("tiepoint " + command)) << command;
  }
  EXPECT_THAT(run({"--help"}).out, HasSubstr("Exit status:\n  0  done\n  1  refused"));
  EXPECT_THAT(run({"register", "--help"}).out, HasSubstr("Exit status:\n  0  done\n  1  refused"));
}

TEST_F(Usage, NoLineOfTheHelpIsWiderThanAHundredAndTenColumns) {
  for (const std::string command : {"register", "import", "groups", "clouds", "render", "rpc"}) {
    std::istringstream help(run({command, "--help"}).out);
    for (std::string line; std::getline(help, line);) EXPECT_LE(line.size(), 110u) << command << ": " << line;
  }
}

TEST_F(Usage, TheVersionIsPrinted) {
  const ProcessResult result = run({"--version"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "tiepoint " PROJECT_VERSION_TEXT "\n");
}

TEST_F(Usage, MistakesGetOneLineThatHelps) {
  EXPECT_EQ(mistake({}), "tiepoint: no command given; see tiepoint --help\n");
  EXPECT_EQ(mistake({"regster"}),
            "tiepoint: unknown command \"regster\"; did you mean \"register\"?; see tiepoint --help\n");
  EXPECT_EQ(mistake({"register", "--bsae", "S1"}),
            "tiepoint: unknown option --bsae; did you mean --base?; see tiepoint register --help\n");
  EXPECT_EQ(mistake({"register"}),
            "tiepoint: nothing to register; name files of reference points, or a drawing with --document FILE\n");
  EXPECT_EQ(mistake({"register", "base.txt", ""}), "tiepoint: a file name is empty; is a shell variable unset?\n");
  EXPECT_EQ(mistake({"import", "base.txt"}), "tiepoint: --document is required; see tiepoint import --help\n");
  EXPECT_EQ(mistake({"import", "--document", "d"}), "tiepoint: nothing to import; name files of reference points\n");
  EXPECT_EQ(mistake({"groups", "--document", "d", "x"}),
            "tiepoint: unexpected argument \"x\"; see tiepoint groups --help\n");
  EXPECT_EQ(mistake({"register", "--layout", "ZYX", "base.txt"}),
            "tiepoint: --layout ZYX: unknown; choose NXYZ, XYZ, XYZW or NXYZW\n");
  EXPECT_EQ(mistake({"register", "--method", "guess", "base.txt"}),
            "tiepoint: --method guess: unknown; choose adjust, pairwise or iterative\n");
  EXPECT_EQ(mistake({"register", "--unit", "ft", "base.txt"}), "tiepoint: --unit ft: unknown; choose m or mm\n");
  EXPECT_EQ(mistake({"register", "base.txt", "--exclude", "base:P9"}),
            "tiepoint: --exclude base:P9: group \"base\" has no point \"P9\"; did you mean \"P1\"?\n");
  EXPECT_EQ(mistake({"register", "base.txt", "--weight", "base:P1=2"}),
            "tiepoint: --weight base:P1=2: the weight must be a number from 0 to 1\n");
}

TEST_F(Usage, ANumberThatIsNoneIsNamed) {
  EXPECT_EQ(mistake({"register", "base.txt", "--method", "iterative", "--max-iterations", "-1"}),
            "tiepoint: --max-iterations -1: not a whole number, 0 or more\n");
  EXPECT_EQ(mistake({"register", "base.txt", "--keep-cluster", "x"}),
            "tiepoint: --keep-cluster x: not a whole number, 0 or more\n");
  EXPECT_EQ(mistake({"register", "base.txt", "--match", "auto", "--match-limit", "2cm"}),
            "tiepoint: --match-limit 2cm: not a number\n");
  EXPECT_EQ(mistake({"register", "base.txt", "--match", "auto", "--match-limit", "0,5"}),
            "tiepoint: --match-limit 0,5: not a number\n");
}

TEST_F(Usage, WhatIsAskedOfAnAdjustmentNeedsItsMethod) {
  for (const char* option : {"--sigma", "--sigmas", "--control", "--start", "--carry"}) {
    EXPECT_EQ(mistake({"register", "base.txt", "--method", "pairwise", option, "1"}),
              std::string("tiepoint: ") + option + " needs --method adjust\n");
  }
  EXPECT_EQ(mistake({"register", "base.txt", "--method", "pairwise", "--level", "all"}),
            "tiepoint: --level needs --method adjust\n");
  EXPECT_EQ(mistake({"register", "base.txt", "--method", "pairwise", "--variance", "a-priori"}),
            "tiepoint: --variance needs --method adjust\n");
  EXPECT_EQ(mistake({"register", "base.txt", "--method", "iterative", "--alpha", "0.01"}),
            "tiepoint: --alpha needs --method adjust\n");
  EXPECT_EQ(mistake({"register", "base.txt", "--method", "iterative", "--power", "0.9"}),
            "tiepoint: --power needs --method adjust\n");
  EXPECT_EQ(mistake({"register", "base.txt", "--method", "iterative", "--trace", "base:P1"}),
            "tiepoint: --trace needs --method adjust\n");
  EXPECT_EQ(mistake({"register", "base.txt", "--method", "adjust", "--max-iterations", "5"}),
            "tiepoint: --max-iterations needs --method iterative\n");
}

TEST_F(Usage, WhatAnAdjustmentCantUseIsNamed) {
  const auto adjusting = [&](const std::vector<std::string>& more) {
    std::vector<std::string> arguments{"register", "base.txt", "shifted.txt", "--method", "adjust"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return mistake(arguments);
  };
  EXPECT_EQ(adjusting({"--sigma", "0"}), "tiepoint: --sigma 0: must be a length above 0, in drawing units\n");
  EXPECT_EQ(adjusting({"--sigma", "base=-1"}),
            "tiepoint: --sigma base=-1: must be a length above 0, in drawing units\n");
  EXPECT_EQ(adjusting({"--alpha", "1"}), "tiepoint: --alpha 1: must be between 0 and 1\n");
  EXPECT_EQ(adjusting({"--level", "bse"}),
            "tiepoint: --level bse: there is no group \"bse\"; did you mean \"base\"?\n");
  EXPECT_EQ(adjusting({"--trace", "base:P9"}),
            "tiepoint: --trace base:P9: group \"base\" has no point \"P9\"; did you mean \"P1\"?\n");
  write("control.txt", "P1 0 0 0\nP2 1 2\n");
  EXPECT_EQ(adjusting({"--control", "control.txt"}),
            "tiepoint: control.txt, line 2: this isn't \"NAME x y z\", alone or with 1 or 3 sigmas or 6 covariances; "
            "write decimal points, and quotation marks around names of several words\n");
}

TEST_F(Usage, TheOptionsOfAnAdjustmentHaveHelpOfAtMostAHundredColumns) {
  const std::string help = run({"register", "--help"}).out;
  for (const char* option : {"--sigma [GROUP=]S", "--sigmas FILE", "--control FILE", "--level GROUP", "--start FILE",
                             "--variance WHICH", "--alpha A", "--power P", "--carry FILE", "--trace GROUP:POINT"}) {
    const std::size_t at = help.find(std::string("\n  ") + option + " ");
    ASSERT_NE(at, std::string::npos) << option;
    EXPECT_LE(help.find('\n', at + 1) - at - 1, 100u) << option;
  }
}

TEST_F(Usage, ANumberMayBearItsPlus) {
  EXPECT_EQ(run({"register", "base.txt", "shifted.txt", "--match", "auto", "--match-limit", "+0.5"}).status, 0);
}

TEST_F(Usage, AnArgumentThatIsntUtf8IsNamed) {
  if (onWindows) GTEST_SKIP() << "every argument is Unicode there";
  EXPECT_EQ(mistake({"register", "base.txt", "--base", "b\xFF"}),
            "tiepoint: the byte 0xFF at offset 1 isn't UTF-8; names and paths must be UTF-8\n");
}

TEST_F(Usage, AFileWhoseNameBeginsWithADashStandsBehindTwoDashes) {
  write("-base.txt", baseLines);
  EXPECT_EQ(run({"register", "--", "-base.txt", "shifted.txt"}).status, 0);
}

TEST_F(Usage, AModuleThatIsNoneIsNamed) {
  const ProcessResult result = run({"groups", "--document", "d", "--module", "base.txt"});
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err,
              HasSubstr("base.txt: the module can't be used: it isn't a library that can be loaded here ("));
}

TEST_F(Usage, AProfileThatIsNoneIsNamed) {
  const ProcessResult result = run({"groups", "--document", "d", "--profile", "base.txt"});
  EXPECT_EQ(result.status, 3);
  EXPECT_THAT(result.err, HasSubstr("base.txt"));
}

TEST_F(Usage, AProfileThatIsMissingIsNamedWhereNothingWillMakeIt) {
  const ProcessResult result = run({"register", "base.txt", "shifted.txt", "--profile", "mine.json"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: --profile mine.json: there is no such file\n");
  ProcessSetup setup;
  setup.input = R"({"jsonrpc":"2.0","id":1,"method":"profile.set","params":{"key":"MaxIterations","value":7}})";
  EXPECT_EQ(run({"rpc", "--profile", "mine.json"}, setup).status, 0);
  EXPECT_TRUE(exists("mine.json"));
}

TEST_F(Usage, AResultThatCantBeWrittenIsAnError) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  ProcessSetup setup;
  setup.outFile = "/dev/full";
  const ProcessResult result = run({"register", "base.txt", "shifted.txt"}, setup);
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: standard output can't be written: No space left on device; the result is lost\n");
  EXPECT_EQ(run({"--help"}, setup).status, 3);
}

TEST_F(Usage, AReaderThatGoesAwayIsNoError) {
  if (onWindows) GTEST_SKIP() << "needs a POSIX shell";
  const std::string script =
      std::string("'") + TIEPOINT_PROGRAM + "' register base.txt shifted.txt | true; echo ${PIPESTATUS[0]}";
  ProcessSetup setup;
  setup.folder = folder.path().string();
  const ProcessResult result = runProgram("/bin/bash", {"-c", script}, setup);
  EXPECT_EQ(result.out, "0\n");
  EXPECT_THAT(result.err, IsEmpty());
}

TEST_F(Usage, RpcAnswersUntilItsInputEnds) {
  ProcessSetup setup;
  setup.input = "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"document.list\"}\n";
  const ProcessResult result = run({"rpc", "--document", "d"}, setup);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(
      result.out,
      "{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":{\"documents\":[{\"document\":1,\"path\":\"d\",\"active\":true}]}}"
      "\n");
  EXPECT_THAT(result.err, IsEmpty());
}

TEST_F(Usage, RpcThatCantAnswerSaysSo) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no device that is always full";
  ProcessSetup setup;
  setup.input = "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"host.info\"}\n";
  setup.outFile = "/dev/full";
  const ProcessResult result = run({"rpc"}, setup);
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.err, "tiepoint: standard output can't be written; the last answers are lost\n");
}

}  // namespace
