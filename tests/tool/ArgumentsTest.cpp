#include "tool/Arguments.h"

#include <gmock/gmock.h>

namespace keyrow::tool {
namespace {

using ::testing::HasSubstr;
using Command = Arguments::Command;
using Words = std::vector<std::string>;

struct Understood {
  Words words;
  Command command;
  std::string subject;
  std::string value;
  bool isJson = false;
};

TEST(ArgumentsTest, UnderstandsEveryCommand) {
  const std::vector<Understood> table{
      {{"status"}, Command::status, "", ""},
      {{"status", "--json"}, Command::status, "", "", true},
      {{"watch", "--json", "--json"}, Command::watch, "", "", true},
      {{"mode"}, Command::showMode, "", ""},
      {{"mode", "special"}, Command::setMode, "", "special"},
      {{"mode", "toggle"}, Command::toggleMode, "", ""},
      {{"override"}, Command::listOverrides, "", ""},
      {{"override", "list"}, Command::listOverrides, "", ""},
      {{"override", "set", "Mail", "standard"}, Command::setOverride, "Mail", "standard"},
      {{"override", "clear", "--json"}, Command::clearOverride, "--json", ""},
      {{"keyboard"}, Command::listKeyboards, "", ""},
      {{"keyboard", "list"}, Command::listKeyboards, "", ""},
      {{"keyboard", "set", "G Pro", "follow"}, Command::setKeyboard, "G Pro", "follow"},
      {{"settings"}, Command::listSettings, "", ""},
      {{"settings", "shortcut"}, Command::showSetting, "shortcut", ""},
      {{"settings", "shortcut", ""}, Command::setSetting, "shortcut", ""},
      {{"doctor"}, Command::doctor, "", ""},
      {{"-h"}, Command::help, "", ""},
      {{"--version"}, Command::version, "", ""},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(testing::PrintToString(row.words));
    const auto parsed = parse(row.words);
    ASSERT_TRUE(parsed) << parsed.error();
    EXPECT_EQ(parsed->command, row.command);
    EXPECT_EQ(parsed->subject, row.subject);
    EXPECT_EQ(parsed->value, row.value);
    EXPECT_EQ(parsed->isJson, row.isJson);
  }
}

TEST(ArgumentsTest, SaysWhatIsWrong) {
  const std::vector<std::pair<Words, std::string>> table{
      {{}, "Tell keyrow what to do."},
      {{""}, "There is no command \"\"."},
      {{"Status"}, "Did you mean status?"},
      {{"mode", "Standard"}, "Did you mean standard?"},
      {{"mode", "special", "now"}, "Nothing belongs behind \"special\", but there is \"now\"."},
      {{"doctor", "--json"}, "Nothing belongs behind \"doctor\", but there is \"--json\"."},
      {{"override", "set", "Mail"}, "needs an application and a mode"},
      {{"override", "set", "Mail", "follow"}, "There is no mode \"follow\"."},
      {{"override", "clear"}, "needs an application"},
      {{"override", "list", "all"}, "Nothing belongs behind \"list\""},
      {{"override", "--json"}, "There is no command \"override --json\"."},
      {{"keyboard", "clear"}, "There is no command \"keyboard clear\"."},
      {{"keyboard", "set", "G Pro"}, "needs a keyboard, and special, standard or follow"},
      {{"keyboard", "set", "G Pro", "folow"}, "Did you mean follow?"},
      {{"settings", "shortcut", "F", "5"}, "Nothing belongs behind \"F\""},
  };
  for (const auto& [words, problem] : table) {
    SCOPED_TRACE(testing::PrintToString(words));
    const auto parsed = parse(words);
    ASSERT_FALSE(parsed);
    EXPECT_THAT(parsed.error(), HasSubstr(problem));
  }
}

}  // namespace
}  // namespace keyrow::tool
