// The policy-editing control, portable side: it owns the loaded templates' code object, shows
// it in one of its views, loads and saves registry profiles through a profile library, and
// offers the host the properties and methods of its dispatch interface, in dispatch order.
// Message boxes go through the host user interface, with texts from the host message list
// (AddString) and the application name as caption. The Windows control wraps this class in
// COM; the command-line host drives it directly.
//
// Threading: apartment-threaded. A control, its code object and the trees in it are used only
// from the thread that created the control, and nothing in them is synchronised: the caches
// of their lookups live on the trees' nodes, which the profile libraries reach through the
// code object on that same thread. The controls of a process also share the unguarded
// per-process state of ozApplication, so a host keeps all of them on one thread, its
// user-interface thread. The Windows control registers itself so (ThreadingModel Apartment).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ozControlViews.h"
#include "ozHostUI.h"
#include "ozStringArray.h"

struct tTreeCodeHandle;

// The control's display modes: which view shows the code object.
enum tDISPLAYMODE : int {
    DisplayPolicies = 0,   // the policy view; edits reach the registry trees on save
    DisplayRegistry = 1,   // the registry view
    DisplayValueGrid = 2,  // the registry-value grid
};

// Host message numbers the control shows itself.
enum : unsigned short {
    HostMessageWrongCodeKind = 55,
    HostMessageOldCodeVersion = 56,
    HostMessageSaveAfterFailedLoad = 75,
    HostMessageRequiredPartEmpty = 99,  // %s the policy's path, %s the part's name
    // %s the key being read, %s the error code, %s the system's text (or what is wrong)
    HostMessageRegistryNotRead = 98,
};

class CADMCtrl {
public:
    // The longest import/export library name kept, in characters.
    static constexpr size_t LibraryNameCapacity = 260;

    // A control without views; it becomes the application's current control.
    explicit CADMCtrl(ozHostUI& ui, ozControlViews* views = nullptr);
    // Destroys the code object; the last control of the process also releases the grammar.
    ~CADMCtrl();
    CADMCtrl(const CADMCtrl&) = delete;
    CADMCtrl& operator=(const CADMCtrl&) = delete;

    // Properties. Setting ShowUser, ShowMachine, WithADMEdit or ozImpExLibrary marks the
    // control modified (ControlModified).
    bool ShowUser() const { return m_showUser; }
    void ShowUser(bool show);
    bool ShowMachine() const { return m_showMachine; }
    void ShowMachine(bool show);
    bool WithADMEdit() const { return m_withADMEdit; }
    void WithADMEdit(bool withEdit);
    // The code object's modified flag; false without a code object.
    bool ShouldSave() const;
    const std::string& ozImpExLibrary() const { return m_library; }
    // Keeps at most the first 260 characters.
    void ozImpExLibrary(const std::string& name);
    // The process-wide variable markers.
    std::string ozVariableStart() const;
    void ozVariableStart(const std::string& marker);
    std::string ozVariableEnd() const;
    void ozVariableEnd(const std::string& marker);
    // Every configured policy in tree order as "+ path" (enabled), "- path" (disabled) or
    // "? path"; empty without a code object or when the tree refuses.
    ozStringArray ConfiguredPolicies() const;

    // Methods, in dispatch order.
    // Resets every part to its default and shows the tree again.
    void Reset();
    // Saves the machine profile to MacReg and the user profile to UsrReg through the library.
    // After a failed Load it first asks (message 75); in the policy view it first writes the
    // policies into the registry trees. On success ShouldSave becomes false.
    bool Save(const char* UsrReg, const char* MacReg);
    // Loads UsrReg and then, when named, MacReg through the library; then (unless the library
    // could not be loaded) clears ShouldSave, derives the policy states and shows the tree. A
    // failed import sets the load-failed flag that makes Save ask first.
    bool Load(const char* UsrReg, const char* MacReg);
    // Destroys the code object and empties the views.
    void Cleanup();
    // Loads the grammar; on failure shows the engine's message.
    bool SetEBNF(const char* pszFilename);
    // Adds a template, ADM or (a name ending in ".admx") ADMX definitions with their language
    // resources (loader/ozADMXLoad.h): it merges into the code object held so far. On failure shows
    // the engine's message. A failed first template leaves no code object; a later one that fails
    // leaves the templates and profile held, with the nodes it added before failing (a file
    // that cannot be opened or read adds none). A code object of another kind (55) or an
    // older version (56) is refused but kept.
    bool SetADM(const char* pszFilename);
    // Load(OzReg, none); on success marks the current control's code object modified.
    bool LoadOZReg(const char* OzReg);
    bool AddString(unsigned short code, const char* text);
    // The host's text of code; empty when none was added.
    std::string GetString(unsigned short code) const;
    // The code object's address as a number; 0 without one.
    std::uintptr_t GetCode() const;
    // Shows the view of the display mode, storing the pending edit of the view shown before.
    void Refresh();
    // Commits the pending edit of the parts panel and of the view of the display mode; in the
    // policy view the policies are written into the registry trees.
    bool SaveSelState();
    // Reports are not written: always false, nothing else happens.
    bool WriteReport(const char* Filename, short Indentation, bool WithData);
    void ShowLegend();
    // Accepted and ignored: always true.
    bool SendKeyDown(short Key, short CtrlCode);
    bool SendKeyUp(short Key, short CtrlCode);
    // Writes the templates as one template file (opened with mode "w"); false without a code
    // object, when the file cannot be created or the write fails. What the template language
    // cannot express (parts and values of XML templates) does not fail the write: the closest
    // form is written and the loss listed in WriteADMLosses.
    bool WriteADM(const char* pszFilename);
    // One line "policy name: what was written instead, or left out" per loss of the last
    // WriteADM; empty when it lost nothing or failed before writing.
    const std::vector<std::string>& WriteADMLosses() const { return m_writeADMLosses; }
    // The registry-value grid's row operations and the search and replace bar: false unless
    // the grid is visible (or the views offer them).
    bool ozInsert();
    bool ozDelete();
    bool ozSRShowSearch();
    bool ozSRShowReplace();
    bool ozSRHide();
    // Adds theKey (with its sub keys when bRecursive), or only theValue when given, from the
    // registry into the user tree (theRoot 1) or the machine tree (any other root number);
    // marks the code object modified whatever the result. A key that cannot be read, and
    // running out of memory, give false and message 98 naming the key, the error code and the
    // system's text; what was read before stays.
    bool AddFromRegistry(long theRoot, const char* theKey, const char* theValue, bool bRecursive);
    // Runs the import-from-registry dialog and, when it ends with OK, adds the chosen key (with
    // its sub keys when "Recursive" is checked) or value as AddFromRegistry does, marks the code
    // object modified and shows it again. The result is whether something was added by the time
    // the call returns: a modal dialog (Windows) has ended by then; a headless dialog stays open
    // until a script ends it, so the call gives false and the import happens at `Dialog OK`.
    bool ShowImportReg();
    // The registry entries the policy at Path configures in its present state; empty without
    // a code object, for a path that names no policy, or when the policy cannot tell.
    ozStringArray PolicyConfigures(const char* Path) const;
    void AboutBox();

    // Not in the dispatch interface: how a host switches the view (the control lays out the
    // new view on the next Refresh), the code object for hosts that show it themselves, and
    // whether a property change needs saving in the host's document.
    int DisplayMode() const { return m_displayMode; }
    void DisplayMode(int mode);
    tTreeCodeHandle* Code() const { return m_code; }
    bool ControlModified() const { return m_controlModified; }
    bool LoadFailed() const { return m_loadFailed != 0; }

private:
    void ShowMessage(tHOSTMESSAGEKIND kind, const std::string& text) const;
    // Writes the policies into the registry trees. An enabled policy with a required part left
    // empty refuses the save before anything is written: the host is told which policy and
    // part, and the result is false.
    bool SavePoliciesToRegistry();
    // Hands the code object to the view of the display mode.
    void ShowCode();
    // AddFromRegistry's work, for a code object that is there: reads the registry into the
    // tree of rootNumber and shows message 98 when the registry cannot be read. A null value
    // reads the whole key; "" the key's default value. machine as for ozRegTree's
    // AddFromRegistry (null: this machine).
    bool AddRegistryKey(unsigned int rootNumber, const char* key, const char* value, bool recursive,
                        const char* machine = nullptr);

    ozHostUI& m_ui;
    ozControlViews* m_views;
    tTreeCodeHandle* m_code = nullptr;
    std::vector<std::string> m_writeADMLosses;
    std::uint32_t m_loadFailed = 0;
    int m_displayMode = DisplayRegistry;
    int m_shownMode = DisplayRegistry;
    bool m_showUser = true;
    bool m_showMachine = true;
    bool m_withADMEdit = false;
    bool m_controlModified = false;
    std::string m_library = "ozRegOZP.dll";
};
