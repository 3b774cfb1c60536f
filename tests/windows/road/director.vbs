' A director that nobody compiled: it drives the plug-in as any script would. The script engine hides its own errors,
' so only the last line of its output tells that everything was reached.
Option Explicit

Const kTower = "Demo Tower/Demo Tower.Floor 1/Thermostat 101"
Const kPlugIn = "Korvell QM5R-FC PIR Configure"
Dim failures, checks, plug, second
failures = 0
checks = 0

Sub Check(what, actual, expected)
  checks = checks + 1
  If CStr(actual) <> CStr(expected) Then
    failures = failures + 1
    WScript.Echo "FAILED " & what & ": '" & actual & "' instead of '" & expected & "'"
  End If
End Sub

' Looks at the error of the statement before the call.
Sub CheckError(what, number, text)
  Check what & " number", Err.Number, number
  Check what & " text", Err.Description, text
  Check what & " source", Err.Source, kPlugIn
  Err.Clear
End Sub

Set plug = CreateObject("QM5RFcPirConfigure.LNSPlugInAPI")

' What the plug-in says of itself.
Check "Name", plug.Name, kPlugIn
Check "ManufacturerID", plug.ManufacturerID, "211"
Check "ManufacturerName", plug.ManufacturerName, "Korvell Inc."
Check "LcaVersion", plug.LcaVersion, "3.0"
Check "Version", plug.Version, "1.0.0"
Check "Visible", plug.Visible, False
Check "networkName", plug.networkName, ""
Check "NetworkInterfaceName", plug.NetworkInterfaceName, ""
Check "Remote", plug.Remote, False
Check "Minimized", plug.Minimized, False

' What can be written is read back.
plug.left = 30
plug.top = 40
plug.Width = 1000
plug.Height = 800
Check "left", plug.left, 30
Check "top", plug.top, 40
Check "Width", plug.Width, 1000
Check "Height", plug.Height, 800
plug.DevelopmentProgramId = "8000D3550004041D"
Check "DevelopmentProgramId", plug.DevelopmentProgramId, "8000D3550004041D"
plug.DevelopmentProgramId = "short"
Check "DevelopmentProgramId of 5", plug.DevelopmentProgramId, ""
plug.NetworkInterfaceName = "anything"
Check "NetworkInterfaceName", plug.NetworkInterfaceName, "anything"
plug.NetworkInterfaceName = ""

' Every error with its number.
On Error Resume Next
plug.Name = "other"
CheckError "Name", 20002, "Attempt to write to read-only property"
plug.Version = "2"
CheckError "Version", 20002, "Attempt to write to read-only property"
plug.LcaVersion = "2"
CheckError "LcaVersion", 20002, "Attempt to write to read-only property"
plug.ManufacturerID = "2"
CheckError "ManufacturerID", 20002, "Attempt to write to read-only property"
plug.ManufacturerName = "2"
CheckError "ManufacturerName", 20002, "Attempt to write to read-only property"
plug.SendCommand 14, 7, kTower
CheckError "command 14", 20003, "Command not supported"
plug.SendCommand 13, 3, kTower
CheckError "type 3", 20004, "Object type not supported for this command"
plug.SendCommand 13, 7, kTower
CheckError "no network", 20005, "Object not found"
plug.networkName = "Nowhere"
CheckError "unknown network", 20006, "Cannot open the network Nowhere"
plug.Minimized = True
CheckError "hidden", 20006, "Can not modify the minimzed property when invisble. The property will be applied the next time the plug-in is made visible"
Check "still hidden", plug.Visible, False
plug.Height = 100
CheckError "minimized", 20006, "Plug-in can't be moved or sized while minimized or maximized"
plug.Minimized = False
Err.Clear
On Error GoTo 0

' Local, and a device.
plug.networkName = "Demo Tower"
Check "networkName", plug.networkName, "Demo Tower"
plug.SendCommand 13, 7, kTower
On Error Resume Next
plug.SendCommand 13, 7, "Demo Tower/Demo Tower.Floor 1/Nobody"
CheckError "unknown device", 20005, "Object not found"
plug.SendCommand 13, 7, "/"
CheckError "empty path", 20005, "Object not found"
plug.SendCommand 13, 7, kTower & "/a/b/c"
CheckError "long path", 20005, "Object not found"
On Error GoTo 0

' A second object shares everything with the first.
Set second = CreateObject("QM5RFcPirConfigure.LNSPlugInAPI")
Check "shared network", second.networkName, "Demo Tower"
second.Visible = True
Check "shared window", plug.Visible, True
second.SendCommand 13, 28, kTower & "/Thermostat"

' A full remote client, and one over the Internet.
plug.Remote = True
Check "Remote", plug.Remote, True
plug.NetworkInterfaceName = "DEMO-REMOTE-1"
plug.networkName = "Demo Tower"
Check "remote network", plug.networkName, "Demo Tower"
plug.Remote = True
plug.NetworkInterfaceName = "Internet"
On Error Resume Next
plug.networkName = "Demo Annex"
' The object server stayed open, so the name is looked up among the interfaces.
CheckError "Internet while open", 20006, "Cannot open the network Demo Annex"
On Error GoTo 0
plug.NetworkInterfaceName = ""
plug.networkName = "Demo Annex"
Check "local again", plug.Remote, False
Check "other network", plug.networkName, "Demo Annex"

plug.Visible = False
Set second = Nothing
Check "alive", plug.Name, kPlugIn
Set plug = Nothing

If failures = 0 Then
  WScript.Echo "director: " & checks & " checks passed"
Else
  WScript.Quit 1
End If
