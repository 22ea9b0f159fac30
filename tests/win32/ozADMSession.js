// A host session through the control's dispatch interface, as a JScript host drives it: what
// JScript sees differently from VBScript (the session there checks the rest): results are
// strictly typed booleans, strings and numbers, and a failed call is an exception to catch.
// Arguments: the source folder, the full path of ozRegOZP.dll, a scratch folder (Windows
// paths). Every check is printed; a failed check ends the script with exit code 1, and the last
// line of a complete run is the sentinel.
var failures = 0;

function check(name, condition) {
    WScript.Echo((condition ? "ok   " : "FAIL ") + name);
    if (!condition)
        failures++;
}

var source = WScript.Arguments(0);
var library = WScript.Arguments(1);
var scratch = WScript.Arguments(2);

var ctl = new ActiveXObject("ozADM.ozADMCtrl.1");
check("new ActiveXObject by ProgID", typeof ctl == "object");

check("AddString is true", ctl.AddString(75, "Save anyway?") === true);
check("GetString returns the text", ctl.GetString(75) == "Save anyway?");
ctl.ozImpExLibrary = library;
check("ozImpExLibrary takes the full path", ctl.ozImpExLibrary == library);

check("SetEBNF loads the grammar", ctl.SetEBNF(source + "\\grammar\\adm.bnf") === true);
check("SetADM every-part.adm", ctl.SetADM(source + "\\tests\\templates\\every-part.adm") === true);
check("GetCode is not 0", ctl.GetCode() != 0);
check("ShouldSave is false", ctl.ShouldSave === false);

var userFile = scratch + "\\js-user.ozp";
var machineFile = scratch + "\\js-machine.ozp";
check("Save writes both profiles", ctl.Save(userFile, machineFile) === true);
check("Load loads both profiles", ctl.Load(userFile, machineFile) === true);
check("WriteReport is false", ctl.WriteReport(scratch + "\\report.txt", 4, false) === false);
check("ShouldSave is false after Load", ctl.ShouldSave === false);

var raised = false;
try {
    ctl.GetString();
} catch (e) {
    raised = true;
}
check("a missing argument raises", raised);

ctl.Cleanup();
check("Cleanup destroys the code", ctl.GetCode() == 0);
ctl = null;

if (failures > 0) {
    WScript.Echo(failures + " check(s) failed");
    WScript.Quit(1);
}
WScript.Echo("JSCRIPT SESSION COMPLETE");
