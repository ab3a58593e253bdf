// The host's document data for the panel, read from the simulated host: what each kind of
// model gives, what a read without mass drops, and when the LCD window is told to read again.
#include "lcd/lcd_functor.h"
#include "lcd/proe_data.h"
#include "lcd/proe_data_impl.h"
#include "lcd/proe_factory.h"
#include "lcd_fakes.h"
#include "sim/host/session.h"
#include "toolkit/host_table.h"
#include "toolkit/pro_notification.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace qvx::lcd::test {
namespace {

class CTimerPlatform : public CFakePlatform {
public:
    std::uintptr_t StartCallbackTimer(WindowId, std::uint32_t ms,
                                      void (*)(WindowId, std::uintptr_t)) override {
        lastTimerMs = ms;
        ++running;
        return 77;
    }
    void StopCallbackTimer(WindowId, std::uintptr_t id) override {
        if (id == 77) --running;
    }
    std::uint32_t lastTimerMs = 0;
    int running = 0;
};

class ProeDataTest : public ::testing::Test {
protected:
    void SetUp() override {
        sim::CSession::Instance().Reset();
        CQvxProNotification::ForgetAll();
        toolkit::InstallHostTable(sim::CSession::Instance().Args());
    }
    void TearDown() override { toolkit::InstallHostTable(nullptr); }
    sim::CSession& Host() { return sim::CSession::Instance(); }
    sim::CModel& Open(int type) {
        Host().OpenModel("Block.PRT", type);
        return *Host().model;
    }
    CTimerPlatform m_platform;
};

TEST_F(ProeDataTest, WithoutModelEverythingStaysCleared) {
    CLcdProeData data(m_platform.window, m_platform);
    EXPECT_EQ(data.GetAuthor(), L"") << "nothing is read before the first update";
    data.UpdateDocument();
    EXPECT_EQ(data.GetName(), L"");
    EXPECT_EQ(data.GetType(), L"");
    EXPECT_EQ(data.GetAuthor(), L"Unknown");
    EXPECT_EQ(data.GetLastSavedBy(), L"Unknown");
    EXPECT_EQ(data.GetCreated(), L"Not saved");
    EXPECT_EQ(data.GetLastSaved(), L"Not saved");
    EXPECT_FALSE(data.HasMassProperties());
}

TEST_F(ProeDataTest, PartWithMaterialKeepsTheMaterialsDensityAndAReadWithoutMassDropsTheRest) {
    sim::CModel& model = Open(sim::kModelPart);
    model.material = sim::CMaterial{L"STEEL", 7.8274e-06, L"kg/mm^3"};
    CLcdProeData data(m_platform.window, m_platform);
    _Qvx::ICadModel& asModel = data;
    asModel.Update();
    EXPECT_EQ(data.GetName(), L"block.prt");
    EXPECT_EQ(data.GetType(), L"Part");
    EXPECT_TRUE(data.HasMassProperties());
    EXPECT_EQ(data.GetMaterial(), L"STEEL");
    EXPECT_EQ(data.GetDensity(), L"7.83e-06");
    EXPECT_EQ(data.GetDensityUnit(), L"kg/mm^3");
    EXPECT_EQ(data.GetMass(), L"4.48");
    EXPECT_EQ(data.GetMassUnit(), L"kg");
    EXPECT_EQ(data.GetVolume(), L"5.71e+05");
    EXPECT_EQ(data.GetVolumeUnit(), L"mm^3");
    EXPECT_EQ(Host().verstampsOpen, 0) << "the version stamp is freed at once";

    _Qvx::ICadDocument& asDocument = data;
    asDocument.Update();
    EXPECT_EQ(data.GetMass(), L"");
    EXPECT_EQ(data.GetVolume(), L"");
    EXPECT_EQ(data.GetMassUnit(), L"");
    EXPECT_EQ(data.GetDensity(), L"7.83e-06") << "the material's density is read every time";
}

TEST_F(ProeDataTest, PartWithoutMaterialTakesTheCalculatedDensityWithTheDoubleSlash) {
    sim::CModel& model = Open(sim::kModelAssembly);
    model.massUnit = L"lbm";
    model.lengthUnit = L"in";
    CLcdProeData data(m_platform.window, m_platform);
    data.UpdateModel();
    EXPECT_EQ(data.GetType(), L"Assembly");
    EXPECT_EQ(data.GetMaterial(), L"");
    EXPECT_EQ(data.GetDensity(), L"7.85e-06");
    EXPECT_EQ(data.GetDensityUnit(), L"lbm//in^3");
    data.UpdateDocument();
    EXPECT_EQ(data.GetDensity(), L"") << "a calculated density goes with the mass";
}

TEST_F(ProeDataTest, DrawingsAndUnknownTypesHaveNoMassBlock) {
    sim::CModel& model = Open(sim::kModelDrawing);
    model.material = sim::CMaterial{L"STEEL", 1, L"u"};
    CLcdProeData data(m_platform.window, m_platform);
    data.UpdateModel();
    EXPECT_EQ(data.GetType(), L"Drawing");
    EXPECT_FALSE(data.HasMassProperties());
    EXPECT_EQ(data.GetMaterial(), L"");
    EXPECT_EQ(data.GetMass(), L"");
    model.type = 50;
    data.UpdateModel();
    EXPECT_EQ(data.GetType(), L"");
    EXPECT_EQ(data.GetName(), L"block.prt");
}

TEST_F(ProeDataTest, FailingHostCallsLeaveTheirFieldsCleared) {
    Open(sim::kModelPart).material = sim::CMaterial{L"STEEL", 1, L"u"};
    Host().faults["ProMaterialPropertyGet"] = {sim::CSession::EFault::Status, -1};
    Host().faults["ProSolidMassPropertyGet"] = {sim::CSession::EFault::Status, -1};
    Host().faults["ProMdlDataGet"] = {sim::CSession::EFault::Status, -1};
    CLcdProeData data(m_platform.window, m_platform);
    data.UpdateModel();
    EXPECT_EQ(data.GetMaterial(), L"STEEL");
    EXPECT_EQ(data.GetDensity(), L"");
    EXPECT_EQ(data.GetMass(), L"");
    EXPECT_EQ(data.GetName(), L"");
    EXPECT_EQ(data.GetType(), L"Part");
}

TEST_F(ProeDataTest, EveryHostCallFailingInTurnLeavesADefinedResult) {
    const char* calls[] = {
        "ProMdlCurrentGet",       "ProMdlTypeGet",           "ProMdlVerstampGet",
        "ProVerstampStringGet",   "ProVerstampFree",         "ProVerstampStringFree",
        "ProMdlDataGet",          "ProMaterialCurrentGet",   "ProModelitemByNameInit",
        "ProMaterialPropertyGet", "ProSolidMassPropertyGet", "ProMdlPrincipalunitsystemGet",
        "ProUnitsystemUnitGet",   "ProUnitExpressionGet"};
    for (const char* call : calls) {
        for (auto kind : {sim::CSession::EFault::Status, sim::CSession::EFault::Throw}) {
            Host().Reset();
            toolkit::InstallHostTable(Host().Args());
            Open(sim::kModelPart).material = sim::CMaterial{L"STEEL", 1, L"u"};
            Host().faults[call] = {kind, -1};
            CLcdProeData data(m_platform.window, m_platform);
            if (kind == sim::CSession::EFault::Throw) {
                // A throwing host stops the read; the window's message handler catches it.
                EXPECT_ANY_THROW(data.UpdateModel()) << call;
            } else {
                data.UpdateModel();
                EXPECT_EQ(data.GetAuthor(), L"Unknown") << call;
                EXPECT_EQ(data.GetName().empty(), std::string(call) == "ProMdlCurrentGet" ||
                                                      std::string(call) == "ProMdlDataGet")
                    << call;
            }
        }
    }
}

TEST_F(ProeDataTest, HugeVersionLooksForEachNameOnce) {
    sim::CModel& model = Open(sim::kModelPart);
    model.folder = L"\\nowhere";
    model.version = 2'000'000'000;
    CLcdProeData data(m_platform.window, m_platform);
    data.UpdateDocument();  // would take hours if the versioned name were asked again and again
    EXPECT_EQ(data.GetFileSize(), 0);
    EXPECT_EQ(data.GetLastSaved(), L"Not saved");
}

TEST(ProeFileTimeTest, TimesOutsideTheCalendarGiveTextOrNothing) {
    EXPECT_FALSE(FormatFileTime(0).empty());
    // Before 1970 and after 3000 the C library may refuse; the result is then empty.
    for (std::int64_t seconds : {std::int64_t{-86400}, std::int64_t{33'000'000'000}}) {
        std::wstring text = FormatFileTime(seconds);
        EXPECT_LT(text.size(), 128u) << seconds;
    }
}

#ifdef _WIN32
// The file search uses the host's path form: drive, colon, backslashes.
TEST_F(ProeDataTest, FileSearchTriesTheModelsVersionThenTheBareName) {
    namespace fs = std::filesystem;
    fs::path folder = fs::temp_directory_path() / "qvx_proe_data";
    fs::remove_all(folder);
    fs::create_directories(folder);
    std::wstring text = folder.wstring();
    sim::CModel& model = Open(sim::kModelPart);
    model.device = text.substr(0, 1);
    model.folder = text.substr(2);
    model.version = 3;
    CLcdProeData data(m_platform.window, m_platform);
    data.UpdateDocument();
    EXPECT_EQ(data.GetFileSize(), 0);
    EXPECT_EQ(data.GetCreated(), L"Not saved");

    std::ofstream(folder / "block.prt.2") << "two";  // never tried: only the model's version
    data.UpdateDocument();
    EXPECT_EQ(data.GetFileSize(), 0);
    std::ofstream(folder / "block.prt") << "bare";
    data.UpdateDocument();
    EXPECT_EQ(data.GetFileSize(), 4);
    std::ofstream(folder / "block.prt.3") << "three";
    data.UpdateDocument();
    EXPECT_EQ(data.GetFileSize(), 5);
    EXPECT_NE(data.GetLastSaved(), L"Not saved");
    EXPECT_FALSE(data.GetLastSaved().empty());

    model.host = L"elsewhere";
    data.UpdateDocument();
    EXPECT_EQ(data.GetFileSize(), 0) << "a model of another machine is not looked for";
    fs::remove_all(folder);
}
#endif

TEST_F(ProeDataTest, ChangesOfDocumentPostOneRequestEachWhileTheWindowLives) {
    CLcdProeData data(m_platform.window, m_platform);
    Host().OpenModel("a.prt", sim::kModelPart);  // retrieval and window change
    Host().Notify(2);
    ASSERT_EQ(m_platform.posts.size(), 3u);
    EXPECT_EQ(m_platform.posts[0].message, kMsgDataChanged);
    EXPECT_EQ(m_platform.posts[0].wParam, 1u);

    Host().Notify(PRO_POPUPMENU_DESTROY_PRE);
    EXPECT_EQ(m_platform.running, 1);
    EXPECT_EQ(m_platform.lastTimerMs, 1000u);
    Host().Notify(PRO_POPUPMENU_CREATE_POST);
    EXPECT_EQ(m_platform.running, 0) << "a popup menu only cancels the timer";
    EXPECT_EQ(m_platform.posts.size(), 3u);

    m_platform.closed = true;
    Host().Notify(PRO_WINDOW_CHANGE_POST);
    EXPECT_EQ(m_platform.posts.size(), 3u) << "nothing is posted to a window that is gone";
}

TEST_F(ProeDataTest, AfterTheDataIsGoneNotificationsDoNothing) {
    { CLcdProeData data(m_platform.window, m_platform); }
    Host().OpenModel("a.prt", sim::kModelPart);
    EXPECT_TRUE(m_platform.posts.empty());
    EXPECT_EQ(CQvxProNotification::Handlers(PRO_WINDOW_CHANGE_POST).size(), 0u);
}

TEST_F(ProeDataTest, FactoryMakesTheTwoClassesAndNothingElse) {
    CLcdProeFactory factory(m_platform);
    std::unique_ptr<_Qvx::IInstance> data(factory.CreateInstance(L"CID_CADDocumentData", 5));
    EXPECT_NE(dynamic_cast<_Qvx::ICadModel*>(data.get()), nullptr);
    std::unique_ptr<_Qvx::IInstance> callback(factory.CreateInstance(L"CID_NotifyCallback", 5));
    EXPECT_NE(dynamic_cast<_Qvx::IOvkLcdFunctor*>(callback.get()), nullptr);
    EXPECT_EQ(factory.CreateInstance(L"CID_Other", 5), nullptr);
}

}  // namespace
}  // namespace qvx::lcd::test
