#include "ui/MainMenu.h"

#include <array>

namespace keyrow {

namespace {

using enum MainMenuAction;

constexpr MainMenuItem separator{};

constexpr std::array applicationItems{
    MainMenuItem{"About Keyrow", showAbout},
    MainMenuItem{"Acknowledgements", showAcknowledgements},
    separator,
    MainMenuItem{"Settings…", showSettings, ","},
    separator,
    MainMenuItem{"Hide Keyrow", hide, "h"},
    MainMenuItem{"Hide Others", hideOtherApplications, "h", /*hasOption=*/true},
    MainMenuItem{"Show All", unhideAllApplications},
    separator,
    MainMenuItem{"Quit Keyrow", terminate, "q"},
};

constexpr std::array editItems{
    MainMenuItem{"Undo", undo, "z"},
    MainMenuItem{"Redo", redo, "Z"},
    separator,
    MainMenuItem{"Cut", cut, "x"},
    MainMenuItem{"Copy", copy, "c"},
    MainMenuItem{"Paste", paste, "v"},
    MainMenuItem{"Delete", remove},
    MainMenuItem{"Select All", selectAll, "a"},
};

constexpr std::array windowItems{
    MainMenuItem{"Close", performClose, "w"},
    MainMenuItem{"Minimize", performMiniaturize, "m"},
    MainMenuItem{"Zoom", performZoom},
    separator,
    MainMenuItem{"Bring All to Front", arrangeInFront},
};

constexpr std::array<MainMenu, 3> menus{
    {{"Keyrow", applicationItems}, {"Edit", editItems}, {"Window", windowItems}}};

}  // namespace

std::span<const MainMenu> mainMenus() { return menus; }

}  // namespace keyrow
