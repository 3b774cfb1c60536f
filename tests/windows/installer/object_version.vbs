On Error Resume Next
Set plug = CreateObject("QM5RFcPirConfigure.LNSPlugInAPI")
If Err.Number = 0 Then WScript.Echo "object: " & plug.Version Else WScript.Echo "object: error " & Err.Number
