Set files = CreateObject("Scripting.FileSystemObject")
Set held = files.OpenTextFile(WScript.Arguments(0))
files.CreateTextFile(WScript.Arguments(1)).Write "held"
Do While files.FileExists(WScript.Arguments(1))
Loop
