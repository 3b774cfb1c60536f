#pragma once

namespace startup {

/// Context numbers of the help file's topics that are not about a field or page of the configuration screen.
/// Shipped numbers never change.
enum HelpTopic : int {
  kStartTopic = 0,  // where the help file opens
  kUnitsTopic = 1201,
  kApplyTopic = 1202,
  kCancelTopic = 1203,
  kRefreshTopic = 1204,
  kExitTopic = 1205,
  kLogTopic = 1206,
  kRegistrationTopic = 1207,
};

}  // namespace startup
