#include "devkit/datapipeline/OrbDpControl.h"

#include "platform/Text.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using testing::ElementsAre;

namespace
{

void NL_SUITE_CALL Keep(void* context, const OrbDpEvent* event)
{
    static_cast<std::vector<std::string>*>(context)->push_back(
        std::to_string(event->code) + " " + event->name + (event->major ? " major" : "") +
        (event->payload == nullptr ? "" : " " + Platform::ToUtf8(event->payload)));
}

TEST(Events, AreKeptInOrderUnlessTheirCallFailed)
{
    std::string name = "opened";
    EXPECT_EQ(OrbDpApi_MetricsRecordEvent(600, name.c_str()), 0);
    name = "overwritten";
    OrbDpControl_SetFault(5, 2);
    EXPECT_EQ(OrbDpApi_MetricsRecordEvent(600, "lost"), 5);
    EXPECT_EQ(OrbDpApi_MetricsRecordMajorEvent(600, "lost", L"x"), 5);
    EXPECT_EQ(OrbDpApi_MetricsRecordMajorEvent(601, "saved", L"\u00e4"), 0);
    OrbDpControl_SetFault(6, 0);
    for (int call = 0; call < 3; ++call)
    {
        EXPECT_EQ(OrbDpApi_MetricsRecordEvent(600, "lost"), 6);
    }
    OrbDpControl_SetFault(0, 0);
    EXPECT_EQ(OrbDpApi_MetricsRecordMajorEvent(602, "closed", nullptr), 0);
    EXPECT_NE(OrbDpApi_MetricsRecordEvent(603, nullptr), 0);
    std::vector<std::string> events;
    OrbDpControl_Events(Keep, &events);
    EXPECT_THAT(events, ElementsAre("600 opened", "601 saved major \xC3\xA4", "602 closed major"));
}

} // namespace
