Set file = CreateObject("Scripting.FileSystemObject").OpenTextFile(WScript.Arguments(0))
finish = Timer + 4
Do While Timer < finish
Loop
