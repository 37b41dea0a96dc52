#include "ui/MainMenuController.h"

namespace keyrow {

void MainMenuController::showAcknowledgements() {
  if (const auto url = use_.bundle.resourceURL("Acknowledgements.txt")) {
    use_.workspace.openURL(*url);
  }
}

}  // namespace keyrow
