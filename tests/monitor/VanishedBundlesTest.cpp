#include "monitor/VanishedBundles.h"

#include "support/LogCapture.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

using namespace Stemhaven;

TEST(VanishedBundles, OfManyTheFirstIsNamedAndTheOthersAreCounted) {
    LogCapture messages;
    VanishedBundles vanished(std::chrono::milliseconds(1));
    for (const int others : {39, 4}) {
        for (int i = 0; i <= others; ++i)
            vanished.add(ProjectDetails(QString("/gone/%1.logicx").arg(i)));
        const auto count = QString("W: Could not find that many more projects on drive: %1").arg(others);
        EXPECT_TRUE(waitUntil([&] { return messages.count(count) == 1; }));
    }
    EXPECT_EQ(messages.count("W: Could not find project on drive. Project will not be added: "), 2);
    EXPECT_EQ(messages.count("W: "), 4);
}
