' After unregistration the control's ProgID must no longer create an object.
Option Explicit
Dim ctl
On Error Resume Next
Set ctl = CreateObject("ozADM.ozADMCtrl.1")
If Err.Number = 0 Then
    WScript.Echo "FAIL CreateObject still works after unregistration"
    WScript.Quit 1
End If
On Error GoTo 0
WScript.Echo "ok   CreateObject fails after unregistration"
WScript.Echo "UNREGISTERED CHECK COMPLETE"
