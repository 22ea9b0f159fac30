' A host session through the control's dispatch interface, as a VBScript host drives it.
' Arguments: the source folder, the full path of ozRegOZP.dll, a scratch folder (Windows paths).
' Every check is printed; a failed check or an unexpected error ends the script with exit code
' 1, and the last line of a complete run is the sentinel.
Option Explicit

Dim failures : failures = 0

Sub Check(name, condition)
    If condition Then
        WScript.Echo "ok   " & name
    Else
        WScript.Echo "FAIL " & name
        failures = failures + 1
    End If
End Sub

Dim source, library, scratch, fso, ctl, code, text, r
source = WScript.Arguments(0)
library = WScript.Arguments(1)
scratch = WScript.Arguments(2)
Set fso = CreateObject("Scripting.FileSystemObject")

Set ctl = CreateObject("ozADM.ozADMCtrl.1")
Check "CreateObject by ProgID", IsObject(ctl)

' Host strings, properties, templates and profiles as a script passes them (what the
' control does with them the native suites check)
Check "AddString returns VARIANT_TRUE", ctl.AddString(75, "Save after a failed load?") = True
Check "AddString result is -1", CInt(ctl.AddString(94, "Cannot load %s")) = -1
Check "GetString returns the text", ctl.GetString(75) = "Save after a failed load?"
Check "GetString of an unknown code is empty", ctl.GetString(1234) = ""

' Properties
Check "ShowUser starts True", ctl.ShowUser = True
ctl.ShowUser = False
Check "ShowUser set False", ctl.ShowUser = False
ctl.ShowUser = True
Check "ShowMachine starts True", ctl.ShowMachine = True
Check "WithADMEdit starts False", ctl.WithADMEdit = False
ctl.WithADMEdit = 1
Check "WithADMEdit converts 1 to True", ctl.WithADMEdit = True
ctl.ozVariableStart = "<<"
ctl.ozVariableEnd = ">>"
Check "ozVariableStart round trip", ctl.ozVariableStart = "<<"
Check "ozVariableEnd round trip", ctl.ozVariableEnd = ">>"
ctl.ozImpExLibrary = library
Check "ozImpExLibrary takes the full path", ctl.ozImpExLibrary = library

' Templates
Check "ShouldSave False without templates", ctl.ShouldSave = False
Check "GetCode 0 without templates", ctl.GetCode() = 0
Check "ConfiguredPolicies is Empty without templates", IsEmpty(ctl.ConfiguredPolicies)
Check "SetEBNF loads the grammar", ctl.SetEBNF(source & "\grammar\adm.bnf") = True
Check "SetADM every-part.adm", ctl.SetADM(source & "\tests\templates\every-part.adm") = True
code = ctl.GetCode()
Check "GetCode is not 0 with templates", code <> 0
Check "ConfiguredPolicies is an array with templates", IsArray(ctl.ConfiguredPolicies)

' Profiles through the .ozp library
Dim userFile, machineFile
userFile = scratch & "\vbs-user.ozp"
machineFile = scratch & "\vbs-machine.ozp"
Check "Save writes both profiles", ctl.Save(userFile, machineFile) = True
Check "the user profile exists", fso.FileExists(userFile)
Check "the machine profile exists", fso.FileExists(machineFile)
Check "LoadOZReg loads the user profile", ctl.LoadOZReg(userFile) = True
Check "Load loads both profiles", ctl.Load(userFile, machineFile) = True
Check "ShouldSave False after Load", ctl.ShouldSave = False

' Keys the test wrote into the registry, added to the user tree and saved with the profile
Check "AddFromRegistry of a whole key", ctl.AddFromRegistry(1, "Software\ozADM-ocx-test", "", True) = True
Check "ShouldSave True after AddFromRegistry", ctl.ShouldSave = True
Check "AddFromRegistry of a missing key fails", ctl.AddFromRegistry(1, "Software\ozADM-ocx-test\Missing", "", False) = False
Check "Save with the imported keys", ctl.Save(userFile, machineFile) = True
text = fso.OpenTextFile(userFile).ReadAll()
Check "the imported sub key is in the profile", InStr(text, "[HKEY_CURRENT_USER\Software\ozADM-ocx-test\Sub]") > 0
Check "the imported value is in the profile", InStr(text, "value ""Name"" type=1 item=r op=I data=""text""") > 0
Check "the imported number is in the profile", InStr(text, "value ""Count"" type=4 item=r op=I data=dword:00000007") > 0

' Writing and the methods with fixed results
Dim written
written = scratch & "\vbs-written.adm"
Check "WriteADM writes the templates", ctl.WriteADM(written) = True
Check "the written template exists", fso.FileExists(written)
Check "WriteReport is False", ctl.WriteReport(scratch & "\report.txt", 2, False) = False
Check "SendKeyDown is True", ctl.SendKeyDown(13, 0) = True
Check "SendKeyUp is True", ctl.SendKeyUp(13, 0) = True
Check "ozInsert is False without the grid", ctl.ozInsert() = False
ctl.Refresh
ctl.Reset

' Errors reach the script as Err.Number (which errors: the C++ client)
On Error Resume Next
r = ctl.SetEBNF()
Check "a missing argument is an error", Err.Number <> 0
Err.Clear
On Error GoTo 0

ctl.Cleanup
Check "Cleanup destroys the code", ctl.GetCode() = 0
Set ctl = Nothing

If failures > 0 Then
    WScript.Echo failures & " check(s) failed"
    WScript.Quit 1
End If
WScript.Echo "VBSCRIPT SESSION COMPLETE"
