// The same in the other script language, which shows error numbers differently.
var device = "Demo Tower/Demo Tower.Floor 1/Thermostat 101", failed = false;

function check(what, actual, expected) {
  if (actual === expected) return;
  failed = true;
  WScript.Echo("FAILED " + what + ": '" + actual + "' instead of '" + expected + "'");
}

function checkError(what, action, number, text) {
  try {
    action();
    check(what, "no error", number);
  } catch (error) {
    check(what, (error.number & 0xFFFF) + " " + error.description, number + " " + text);
    check(what + ", severity and facility", (error.number >>> 16).toString(16), "800a");
  }
}

var plug = new ActiveXObject("QM5RFcPirConfigure.LNSPlugInAPI");
checkError("Version", function () { plug.Version = "2"; }, 20002, "Attempt to write to read-only property");
checkError("no network", function () { plug.SendCommand(13, 7, device); }, 20005, "Object not found");
checkError("Nowhere", function () { plug.networkName = "Nowhere"; }, 20006, "Cannot open the network Nowhere");
plug.networkName = "Demo Tower";
plug.SendCommand(13, 7, device);
plug = null;
CollectGarbage();
if (!failed) WScript.Echo("checks passed");
