#include "devkit/flyer/NlFlyerControl.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using testing::ElementsAre;

namespace
{

struct Seen
{
    int32_t id;
    std::wstring texts;
    NlFlyerState state;
};

std::vector<Seen> Flyers()
{
    std::vector<Seen> flyers;
    NlFlyerControl_Flyers(
        [](void* context, const NlFlyerView* flyer) {
            std::wstring texts = std::wstring(flyer->title) + L"|" + flyer->description;
            for (uint32_t i = 0; i < flyer->buttonCount; ++i)
            {
                texts += std::wstring(L"|") + flyer->buttons[i].caption;
            }
            static_cast<std::vector<Seen>*>(context)->push_back({flyer->id, texts, flyer->state});
        },
        &flyers);
    return flyers;
}

NlFlyerHandle Create(const wchar_t* title)
{
    NlFlyerHandle flyer = nullptr;
    EXPECT_EQ(NlFlyer_CreateFlyer(0, title, L"text", 3, &flyer), 0);
    return flyer;
}

TEST(Flyer, PressedButtonFiresItsActionOrClosesTheFlyer)
{
    std::vector<std::string> fired;
    NlFlyerControl_SetActionHandler(
        [](void* context, const char* action) {
            static_cast<std::vector<std::string>*>(context)->emplace_back(action);
        },
        &fired);
    const auto flyer = Create(L"title");
    const NlFlyerButton extend{0, "@Package:extend", 0};
    const NlFlyerButton close{0, nullptr, 0};
    EXPECT_EQ(NlFlyer_AddButton(flyer, L"Extend", &extend, 0), 0);
    EXPECT_EQ(NlFlyer_AddButton(flyer, L"Close", &close, 0), 0);
    const int32_t id = Flyers().back().id;
    EXPECT_EQ(Flyers().back().texts, L"title|text|Extend|Close");

    EXPECT_FALSE(NlFlyerControl_Press(id, 0)) << "it is not shown yet";
    EXPECT_EQ(NlFlyer_ShowFlyer(flyer, -2, 0), 0);
    EXPECT_TRUE(NlFlyerControl_Press(id, 0));
    EXPECT_THAT(fired, ElementsAre("@Package:extend"));
    EXPECT_EQ(Flyers().back().state, NL_FLYER_SHOWN);
    EXPECT_FALSE(NlFlyerControl_Press(id, 2));
    EXPECT_FALSE(NlFlyerControl_Press(id + 1, 0));
    EXPECT_FALSE(NlFlyerControl_Press(0, 0));
    EXPECT_TRUE(NlFlyerControl_Press(id, 1));
    EXPECT_EQ(Flyers().back().state, NL_FLYER_CLOSED);
    EXPECT_FALSE(NlFlyerControl_Press(id, 0));
    EXPECT_NE(NlFlyer_ShowFlyer(flyer, -2, 0), 0) << "a closed flyer is gone";
    NlFlyerControl_SetActionHandler(nullptr, nullptr);
}

TEST(Flyer, CallThatWasToldToFailChangesNothing)
{
    const auto flyer = Create(L"faulty");
    const auto count = Flyers().size();
    NlFlyerHandle none = nullptr;
    EXPECT_FALSE(NlFlyerControl_SetFault("NlFlyer_Nothing", 1, 1));
    NlFlyerControl_SetFault("NlFlyer_CreateFlyer", 11, 1);
    NlFlyerControl_SetFault("NlFlyer_ShowFlyer", 12, 0);
    EXPECT_EQ(NlFlyer_CreateFlyer(0, L"t", L"d", 3, &none), 11);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(Flyers().size(), count);
    EXPECT_EQ(NlFlyer_ShowFlyer(flyer, -2, 0), 12);
    EXPECT_EQ(NlFlyer_ShowFlyer(flyer, -2, 0), 12);
    EXPECT_EQ(Flyers().back().state, NL_FLYER_CREATED);
    NlFlyerControl_ClearFaults();
    EXPECT_EQ(NlFlyer_ShowFlyer(flyer, -2, 0), 0);
    EXPECT_EQ(NlFlyer_CloseFlyer(flyer), 0);
    EXPECT_NE(NlFlyer_CloseFlyer(nullptr), 0);
    EXPECT_EQ(Flyers().back().state, NL_FLYER_CLOSED);
}

} // namespace
