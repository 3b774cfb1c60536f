' A director in a script. The script engine hides its own errors, so only the last line of the output shows that the
' script reached its end.
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

Set plug = CreateObject("QM5RFcPirConfigure.LNSPlugInAPI")

' What the plug-in says about itself.
Check "identity", plug.Name & ", " & plug.ManufacturerID & ", " & plug.ManufacturerName, kPlugIn & ", 211, Korvell Inc."
Check "versions", plug.LcaVersion & ", " & plug.Version, "3.0, 1.0.0"
Check "state", plug.Visible & plug.Remote & plug.Minimized & plug.networkName & plug.NetworkInterfaceName, "FalseFalseFalse"

' An error with its source.
On Error Resume Next
plug.Minimized = True
Check "hidden", Err.Number & " " & Err.Source & ": " & Err.Description, "20006 " & kPlugIn & ": Can not modify the minimzed property when invisble. The property will be applied the next time the plug-in is made visible"
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
