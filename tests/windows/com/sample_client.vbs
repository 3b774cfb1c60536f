' Called by a script host. An error that stops a script is silent, so only the exit code 7 means that all went well.
Dim sample, item, found
Set sample = CreateObject("Qm5r.ComSample")
found = sample.Items("beta")
For Each item In sample.Items
  found = found & " " & item
Next
Set sample.Value = sample
found = found & " " & (sample.Value Is sample)
Set sample.Value = Nothing
On Error Resume Next
sample.Throw 20003, "Not supported"
found = found & " " & Err.Number & " " & Err.Source & ": " & Err.Description
Set sample = Nothing
If found = "beta alpha beta gamma True 20003 Sample: Not supported" Then WScript.Quit 7
WScript.Echo found
