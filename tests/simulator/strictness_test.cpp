#include "simulator/client.h"

namespace {

using namespace client;

TEST(Strictness, EachSettingEnforcesADocumentedRule) {
  const std::string points = kVariablesOfA + "(nciSetPts)", options = kVariablesOfA + "(nciGenOpts)",
                    devices = kSystem + ".Subsystems(F).AppDevices", add = devices + ".Add(",
                    type = ";QM [demo])", owner = "#8000D35500040000", user = ".UNVT_fc_pir_gen_opts",
                    interface = kDeviceA + ".Interface";
  const std::string unknown = " ! -2147352570", no_member = " ! -2147352573";
  struct Case {
    const char* strict;
    std::vector<std::string> steps;
  };
  const Case cases[] = {
      {"'formats': true",
       {points + ".DsFormatType=#SISNVT_temp_setpt ! 18035", points + ".DsFormatType=SNVT_temp_setpt#US",
        points + ".Value -> 73.4,77,82.4,69.8,66.2,60.8", points + ".DsFormatType=RAW",
        options + ".DsFormatType=UNVT_fc_pir_gen_opts#SI ! 18035",
        options + ".DsFormatType=" + owner + "[6]" + user + " ! 18035",
        options + ".DsFormatType=" + owner + "[7]" + user + " ! 18035",
        options + ".DsFormatType=" + owner + "[4]" + user + "#SI",
        options + ".DsFormatType=#8000D30000000000[3]" + user, options + ".DsFormatType="}},
      {"'regional': true",
       {points + ".Value=23;25;28,25;21;19;16", points + ".Value -> 23;25;28,25;21;19;16",
        points + ".Value=23,25,28,21,19,16 ! 18035", points + ".Value=23;25;28.5;21;19;16 ! 18035"}},
      {"'coarse': true",
       {points + ".Value=23,25,28.25,21,19,16.04", points + ".Value -> 23,25,28.2,21,19,16"}},
      {"'pausing': true",
       {kSystem + ".DsMode=0 ! 17094", kSystem + ".DsPause=1", points + ".Value ! 17091",
        points + ".Value=23,25,28,21,19,16 ! 17091", kSystem + ".DsMode=0", kSystem + ".DsPause=0",
        points + ".Value -> 23,25,28,21,19,16"}},
      {"'demonstration': 17009",
       {kSystem + ".Subsystems(F).Subsystems(West).AppDevices.Count -> 2", add + "New" + type + " ! 17009"}},
      {"'release': 290", {kSystem + ".LdrfCatalogPath" + unknown, kSystem + ".Name -> S"}},
      {"'missingMembers': ['SourceOptions']", {points + ".SourceOptions=0" + unknown}},
      {"'readOnlyMembers': ['VersionNumber']",
       {kDeviceA + ".DeviceTemplate.ComponentApps(1).VersionNumber=2" + no_member,
        kDeviceA + ".DeviceTemplate.ComponentApps(1).VersionNumber -> "}},
      {"'database': true",
       {points + ".Value=24,26,28,21,19,16", points + ".Value=24,26,28,22,19,16",
        interface + ".DownloadConfigProperties(0)", points + ".Value -> 23,25,28,21,19,16",
        points + ".Value=24,26,28,22,19,16", interface + ".UploadConfigProperties(0)",
        interface + ".DownloadConfigProperties(0)", points + ".Value -> 24,26,28,22,19,16"}},
      {"'all': false",
       {points + ".Value=24,26,28,21,19,16", interface + ".DownloadConfigProperties(0)",
        points + ".Value -> 24,26,28,21,19,16", kSystem + ".DsMode=1", kSystem + ".DsMode -> 1",
        devices + ".Count -> 2", add + "New" + type, add + "New" + type + " ! 17003",
        add + "a/b" + type + " ! 17090", devices + "(New).HasBeenCommissioned -> False",
        devices + "(New).Interface.NetworkVariables(nciSetPts).Value ! 18200",
        kSystem + ".Subsystems(ALL).AppDevices.Add(Other" + type + " ! 17119"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.strict);
    World world(Replaced(kWorld, "{\n", Quoted("{'strict': {" + std::string(c.strict) + "},\n")));
    const LateBoundPtr root = world.Open();
    // Formats and settings belong to the object, so these keep it alive.
    const LateBoundPtr held[] = {Reach(root, points), Reach(root, options), Reach(root, kSystem)};
    Play(root, c.steps);
  }
}

}  // namespace
