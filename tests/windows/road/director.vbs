' A director that nobody compiled: it drives the plug-in as any script would. The script engine hides its own errors,
' so only the last line of its output tells that everything was reached.
Option Explicit

Const kTower = "Demo Tower/Demo Tower.Floor 1/Thermostat 101"
Const kPlugIn = "Korvell QM5R-FC PIR Configure"
Dim failed, plug, second

Sub Check(what, actual, expected)
  If CStr(actual) <> CStr(expected) Then
    failed = True
    WScript.Echo "FAILED " & what & ": '" & actual & "' instead of '" & expected & "'"
  End If
End Sub

' Looks at the error of the statement before the call.
Sub CheckError(what, number, text)
  Check what, Err.Number & " " & Err.Source & ": " & Err.Description, number & " " & kPlugIn & ": " & text
  Err.Clear
End Sub

Set plug = CreateObject("QM5RFcPirConfigure.LNSPlugInAPI")

' What the plug-in says of itself.
Check "identity", plug.Name & ", " & plug.ManufacturerID & ", " & plug.ManufacturerName, kPlugIn & ", 211, Korvell Inc."
Check "versions", plug.LcaVersion & ", " & plug.Version, "3.0, 1.0.0"
Check "state", plug.Visible & plug.Remote & plug.Minimized & plug.networkName & plug.NetworkInterfaceName, "FalseFalseFalse"

' What can be written is read back.
plug.DevelopmentProgramId = "8000D3550004041D"
Check "DevelopmentProgramId", plug.DevelopmentProgramId, "8000D3550004041D"
plug.DevelopmentProgramId = "short"
Check "DevelopmentProgramId of 5", plug.DevelopmentProgramId, ""

' Errors of every kind.
On Error Resume Next
plug.Name = "other"
CheckError "Name", 20002, "Attempt to write to read-only property"
plug.SendCommand 14, 7, kTower
CheckError "command 14", 20003, "Command not supported"
plug.SendCommand 13, 7, kTower
CheckError "no network", 20005, "Object not found"
plug.Minimized = True
CheckError "hidden", 20006, "Can not modify the minimzed property when invisble. The property will be applied the next time the plug-in is made visible"
plug.Minimized = False
On Error GoTo 0

' Local, and a device.
plug.networkName = "Demo Tower"
Check "networkName", plug.networkName, "Demo Tower"
plug.SendCommand 13, 7, kTower

' A second object shares everything with the first.
Set second = CreateObject("QM5RFcPirConfigure.LNSPlugInAPI")
Check "shared network", second.networkName, "Demo Tower"
second.Visible = True
Check "shared window", plug.Visible, True
second.SendCommand 13, 28, kTower & "/Thermostat"

' A full remote client.
plug.Remote = True
plug.NetworkInterfaceName = "DEMO-REMOTE-1"
plug.networkName = "Demo Tower"
Check "remote network", plug.networkName, "Demo Tower"

plug.Visible = False
Set second = Nothing
Check "alive", plug.Name, kPlugIn
Set plug = Nothing

If failed Then WScript.Quit 1
WScript.Echo "director: all checks passed"
