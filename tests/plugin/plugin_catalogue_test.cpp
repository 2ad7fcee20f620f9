// The catalogue's host records, built once per process (a library holds one
// initialised catalogue), with qmhost's allocator, which checks every size.
#include <gtest/gtest.h>

#include "core/errors.h"
#include "host.h"
#include "host_memory.h"
#include "plugin/af_plugin.h"
#include "boundary/plugin_params.h"

namespace qm {
namespace {

using qmhost::Memory;

TAFAppInfo TestApp() {
  TAFAppInfo app = qmhost::Host::Instance().MakeAppInfo();
  app.Ver = u"9.5";
  return app;
}

TEST(PluginCatalogue, BuildsHostRecordsOnceAndReturnsThemAtDestruction) {
  const size_t blocksBefore = Memory().Outstanding();
  {
    TAFPlugin plugin;
    plugin.Description = u"Test";
    plugin.ID = 1234;
    TAction& a = plugin.AddAction();
    a.Name = u"First";
    a.SetActionID(u"a_csv_open");
    a.Indent = 5;
    a.ActionType = atBeginLoop;
    TAction& b = plugin.AddAction();
    b.Indent = -3;
    b.AllowNTService = false;
    plugin.OnAbout = [] {};

    TAFPluginInfo* info = plugin.Initialize(TestApp());
    ASSERT_NE(info, nullptr);
    EXPECT_NE(info->About, nullptr);
    EXPECT_EQ(info->PluginConfig, nullptr);
    EXPECT_EQ(info->GetPluginImage, nullptr);  // no image collection
    ASSERT_EQ(info->ActionsInfo->ActionsCount, 2);
    EXPECT_EQ(Memory().Outstanding(), blocksBefore + 2);

    const TAFActionInfo* first = info->ActionsInfo->GetActionInfo(0);
    EXPECT_EQ(std::u16string(first->ActionID), u"A_CSV_OPEN");
    EXPECT_EQ(first->Indent, 1);
    EXPECT_EQ(first->ActionType, atBeginLoop);
    EXPECT_EQ(first->AllowNTService, -1);
    const TAFActionInfo* second = info->ActionsInfo->GetActionInfo(1);
    EXPECT_EQ(second->Indent, -1);
    EXPECT_EQ(second->AllowNTService, 0);
    EXPECT_EQ(std::u16string(second->Name), u"New Action");
    EXPECT_THROW(info->ActionsInfo->GetActionInfo(2), EListError);

    try {
      TAFPlugin other;
      other.Initialize(TestApp());
      FAIL() << "a second catalogue was initialised";
    } catch (const QmError& e) {
      EXPECT_EQ(e.Message(), u"Project can have only one component TAFPlugin");
    }

    // The parameter set goes back to the host in a block of its allocator.
    TQMPluginParams set(u"a=1");
    TAFActionParams out{};
    set.ToActionParams(out);
    EXPECT_EQ(out.Size, 12);
    EXPECT_EQ(std::u16string(out.PPtr), u"a=1\r\n");
    TQMPluginParams empty(u"");
    empty.ToActionParams(out);  // the previous block is returned with its size
    EXPECT_EQ(out.Size, 2);
    EXPECT_EQ(out.PPtr[0], 0);
    TAFEventParams ev{};
    TQMPluginParams fromEvent(ev);
    EXPECT_THROW(fromEvent.ToActionParams(out), QmError);
    EXPECT_TRUE(Memory().Free(out.PPtr, out.Size));  // untouched after the refusal
  }
  // The action records went back with their size (48 bytes) at destruction.
  EXPECT_EQ(Memory().Outstanding(), blocksBefore);
  EXPECT_EQ(Memory().Errors(), std::vector<std::string>{});
}

TEST(PluginCatalogue, ImagesFollowTheSizeProtocol) {
  std::vector<PluginImage> images = {{u"csv", {1, 2, 3, 4}}};
  TAFPlugin plugin;
  plugin.ImageCollection = &images;
  unsigned char buffer[8] = {};
  uint32_t size = 0;
  EXPECT_FALSE(plugin.ExportImage(0, buffer, &size));
  EXPECT_EQ(size, 4u);
  size = 4;
  EXPECT_TRUE(plugin.ExportImage(0, buffer, &size));
  EXPECT_EQ(buffer[3], 4);
  size = 8;
  EXPECT_TRUE(plugin.ExportImage(5, buffer, &size));  // no such image
  EXPECT_EQ(size, 0u);
  EXPECT_TRUE(plugin.ExportImage(-1, buffer, &size));
  EXPECT_EQ(size, 0u);
}

TEST(PluginCatalogue, DescriptionsAreCutTo256Characters) {
  EXPECT_EQ(FitDescription(std::u16string(256, u'x')), std::u16string(256, u'x'));
  EXPECT_EQ(FitDescription(std::u16string(257, u'x')), std::u16string(253, u'x') + u"...");
}

TEST(ProducedVariables, SortedQuotedAndUniqueWithoutRegardToCase) {
  TProducedVariables vars;
  EXPECT_TRUE(vars.AddVarName(u"  rows \t"));
  EXPECT_TRUE(vars.AddVarName(u"ROWS"));
  EXPECT_FALSE(vars.AddVarName(u" \r\n"));
  EXPECT_EQ(vars.GetVariables(), u"rows");  // quoting and order: the editors' tests
  TQMPluginParams block(u"_qm_variables_produced=old\r\n");
  block.SetString(TProducedVariables().ParameterName(), TProducedVariables().GetVariables());
  EXPECT_FALSE(block.ParamExist(u"_qm_variables_produced"));
}

}  // namespace
}  // namespace qm
