#pragma once

namespace startup {

/// Topics of the help file outside the configuration screen's fields and pages, by their context numbers.
/// Numbers once shipped stay.
enum HelpTopic : int {
  kStartTopic = 0,  // wherever the file opens by itself
  kUnitsTopic = 1201,
  kApplyTopic = 1202,
  kCancelTopic = 1203,
  kRefreshTopic = 1204,
  kExitTopic = 1205,
  kLogTopic = 1206,
  kRegistrationTopic = 1207,
};

}  // namespace startup
