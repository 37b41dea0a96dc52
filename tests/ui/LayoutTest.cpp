#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <set>
#include <string_view>
#include <variant>
#include <vector>

#include "ui/AboutLayout.h"
#include "ui/GeneralLayout.h"

namespace keyrow {
namespace {

/// Those of both panes.
std::vector<Checkbox> allCheckboxes() {
  auto all = checkboxesOf(generalLayout::rows);
  std::ranges::copy(checkboxesOf(aboutLayout::rows), std::back_inserter(all));
  return all;
}

void expectEveryControlOnce(const auto& rows) {
  std::vector<std::size_t> controls;
  for (const auto& row : rows) {
    if (row.what.index() == 0) controls.push_back(static_cast<std::size_t>(std::get<0>(row.what)));
  }
  std::vector<std::size_t> cases(controls.size());
  std::iota(cases.begin(), cases.end(), std::size_t{0});
  EXPECT_EQ(controls, cases);
}

TEST(PaneLayoutTest, EveryControlStandsInOneRowInTheOrderOfTheCases) {
  expectEveryControlOnce(generalLayout::rows);
  expectEveryControlOnce(aboutLayout::rows);
}

TEST(PaneLayoutTest, EveryCheckboxHasASwitchANameAndATitleOfItsOwn) {
  std::set<Switch> switches;
  std::set<std::string_view> names;
  std::set<std::string_view> titles;
  for (const auto& checkbox : allCheckboxes()) {
    EXPECT_TRUE(switches.insert(checkbox.what).second) << checkbox.title;
    EXPECT_TRUE(!checkbox.name.empty() && names.insert(checkbox.name).second) << checkbox.name;
    EXPECT_TRUE(!checkbox.title.empty() && titles.insert(checkbox.title).second) << checkbox.title;
  }
}

TEST(PaneLayoutTest, EveryBooleanSettingHasACheckbox) {
  std::set<BooleanSetting> stored;
  std::set<BooleanSetting> shown;
  for (const auto& row : booleanSettingTable) stored.insert(row.setting);
  for (const auto& checkbox : allCheckboxes()) {
    if (const auto* setting = std::get_if<BooleanSetting>(&checkbox.what)) shown.insert(*setting);
  }
  EXPECT_EQ(shown, stored);
}

void expectHintsBelowWhatTheyExplain(const auto& rows) {
  for (std::size_t index = 0; index < rows.size(); ++index) {
    const auto* hint = std::get_if<Hint>(&rows[index].what);
    if (!hint) continue;
    ASSERT_GT(index, 0U) << hint->text;
    ASSERT_LT(index + 1, rows.size()) << hint->text;
    EXPECT_LT(rows[index].place.topGap, rows[index + 1].place.topGap) << hint->text;
  }
}

TEST(PaneLayoutTest, AHintIsNearerToWhatItExplainsThanToWhatFollows) {
  expectHintsBelowWhatTheyExplain(generalLayout::rows);
  expectHintsBelowWhatTheyExplain(aboutLayout::rows);
}

}  // namespace
}  // namespace keyrow
