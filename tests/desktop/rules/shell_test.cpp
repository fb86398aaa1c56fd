#include "app/shell/commands.h"

#include <gtest/gtest.h>

#include "support/recording_sinks.h"

using namespace ira;
using namespace ira::shell;

namespace {

TEST(ToolbarKeys, KnownKeysRunTheirCommandOthersWarn) {
  EXPECT_EQ(CommandForKey("IRA"), Command::Ira);
  EXPECT_EQ(CommandForKey("Projection"), Command::Projection);
  EXPECT_FALSE(CommandForKey("ira").has_value());  // keys are exact
  EXPECT_FALSE(CommandForKey("SaveAs").has_value());  // menu only
  ira::testing::RecordingScope rec;
  WarnUnknownToolbarKey();
  EXPECT_EQ(rec.messages.Last().title, "WARNING");
  EXPECT_EQ(rec.messages.Last().icon, MsgIcon::Exclamation);
  EXPECT_EQ(rec.messages.Last().text, "The program does not understand the toolbar choice. Please let Quillon " +
                                          std::string(kSupportPhone) + " know about this.");
}

TEST(UsageTime, SingularOnlyForOne) {
  EXPECT_EQ(UsageText(3600 + 60 + 1),
            "You have spent 1 hour, and 1 minute 1 second using Quillon's QSW - Tallyra. How long would your work "
            "have taken without it?");
  EXPECT_EQ(UsageText(2 * 3600 + 0 + 59),
            "You have spent 2 hours, and 0 minutes 59 seconds using Quillon's QSW - Tallyra. How long would your "
            "work have taken without it?");
  EXPECT_EQ(UsageSeconds(86390, 5), 15);  // across midnight
  EXPECT_EQ(UsageSeconds(100, 160), 60);
}

}  // namespace
