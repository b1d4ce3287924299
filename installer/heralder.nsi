; The installer and uninstaller of Quenmark Heralder. Built by scripts/package.sh,
; which passes:
;   VERSION_DISPLAY  "17.0a"     (Apps & features, page texts)
;   VERSION_DOTTED   "17.0.0.2"  (the installer's own version block)
;   COPYRIGHT        the copyright line of the version blocks
;   ROOT             the source tree
;   PROGRAMS         the folder holding the release heralder.exe and html\
;   OUTFILE          where the installer goes
;   WIZARD_BITMAP    the welcome and finish pages' picture
;   SIGN_SCRIPT      optional: signs the file named by its argument in place
;
; The program is installed once per machine, so it asks for administrator
; rights; everything a user owns (settings, seen list, pictures) lives in that
; user's own data folder, which the installer only creates and never fills, so
; installing over an older copy leaves it alone.

; A 64-bit installer for a 64-bit program: it needs no 32-bit subsystem and
; sees the real Program Files folder and registry.
Target amd64-unicode
ManifestDPIAware true
RequestExecutionLevel admin
SetCompressor /SOLID lzma

!include MUI2.nsh
!include x64.nsh
!include FileFunc.nsh
!include LogicLib.nsh

!define PRODUCT "Quenmark Heralder"
!define COMPANY "Quenmark"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quenmark Heralder"
!define MENU_FOLDER "Quenmark"

Name "${PRODUCT}"
OutFile "${OUTFILE}"
InstallDir "$PROGRAMFILES64\Quenmark\Heralder"
BrandingText "${PRODUCT} ${VERSION_DISPLAY}"

VIProductVersion "${VERSION_DOTTED}"
VIFileVersion "${VERSION_DOTTED}"
VIAddVersionKey /LANG=1033 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=1033 "CompanyName" "${COMPANY}"
VIAddVersionKey /LANG=1033 "FileDescription" "${PRODUCT} Setup"
VIAddVersionKey /LANG=1033 "FileVersion" "${VERSION_DOTTED}"
VIAddVersionKey /LANG=1033 "ProductVersion" "${VERSION_DISPLAY}"
VIAddVersionKey /LANG=1033 "LegalCopyright" "${COPYRIGHT}"

!ifdef SIGN_SCRIPT
    ; Signed before they are packed or published: the uninstaller inside the
    ; installer, then the installer itself.
    !uninstfinalize '"${SIGN_SCRIPT}" "%1"'
    !finalize '"${SIGN_SCRIPT}" "%1"'
!endif

!define MUI_ICON "${ROOT}/resources/heralder.ico"
!define MUI_UNICON "${ROOT}/resources/heralder.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${WIZARD_BITMAP}"
!define MUI_UNWELCOMEFINISHPAGE_BITMAP "${WIZARD_BITMAP}"
!define MUI_ABORTWARNING
; The log stays up so the user sees that everything went well.
!define MUI_FINISHPAGE_NOAUTOCLOSE
!define MUI_UNFINISHPAGE_NOAUTOCLOSE

!define MUI_WELCOMEPAGE_TITLE "Welcome to ${PRODUCT} ${VERSION_DISPLAY}"
!define MUI_WELCOMEPAGE_TEXT "${PRODUCT} tells you about new versions, fixes and tips for the Quenmark products on this computer, once a day, in a small window.$\r$\n$\r$\nIf an earlier copy is installed, it is replaced; your settings and the list of messages you have already seen are kept.$\r$\n$\r$\nClick Next to continue."
!insertmacro MUI_PAGE_WELCOME
!define MUI_PAGE_HEADER_TEXT "Before you install"
!define MUI_PAGE_HEADER_SUBTEXT "Please read what ${PRODUCT} does and what it keeps."
!define MUI_LICENSEPAGE_TEXT_TOP "Press Page Down to see the rest of the notice."
!define MUI_LICENSEPAGE_BUTTON "&Next >"
!define MUI_LICENSEPAGE_TEXT_BOTTOM "Click Next to continue."
!insertmacro MUI_PAGE_LICENSE "${ROOT}/installer/notice.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
; The sign-up runs for the person at the screen when they leave the last page;
; a silent install never shows this page, so it never starts the program.
!define MUI_FINISHPAGE_RUN "$INSTDIR\heralder.exe"
!define MUI_FINISHPAGE_RUN_PARAMETERS "/INITCONFIG"
!define MUI_FINISHPAGE_RUN_TEXT "Choose what to be told about now"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\html\manual.html"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Open the manual"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_FINISH

!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE "English"

Function .onInit
    ${IfNot} ${RunningX64}
        MessageBox MB_OK|MB_ICONSTOP "${PRODUCT} needs a 64-bit edition of Windows." /SD IDOK
        Abort
    ${EndIf}
    SetRegView 64
    ; Installing again goes where the first copy went.
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 != ""
        StrCpy $INSTDIR $0
    ${EndIf}
FunctionEnd

Section "Program" SecProgram
    SectionIn RO
    SetOverwrite on
    SetOutPath "$INSTDIR"
    File "${PROGRAMS}/heralder.exe"
    SetOutPath "$INSTDIR\html"
    File /r "${PROGRAMS}/html/*.*"
    SetOutPath "$INSTDIR\policy"
    File "${ROOT}/installer/policy/heralder.admx"
    SetOutPath "$INSTDIR\policy\en-US"
    File "${ROOT}/installer/policy/en-US/heralder.adml"
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\uninstall.exe"

    ; Start menu entries for everybody on the machine.
    SetShellVarContext all
    CreateDirectory "$SMPROGRAMS\${MENU_FOLDER}"
    CreateShortcut "$SMPROGRAMS\${MENU_FOLDER}\Heralder.lnk" "$INSTDIR\heralder.exe" "" \
        "$INSTDIR\heralder.exe" 0 SW_SHOWNORMAL "" "${PRODUCT}"
    CreateShortcut "$SMPROGRAMS\${MENU_FOLDER}\Heralder Manual.lnk" "$INSTDIR\html\manual.html" "" \
        "" 0 SW_SHOWNORMAL "" "${PRODUCT} manual"

    ; The program expects its data folders to exist and never makes them.
    SetShellVarContext current
    CreateDirectory "$APPDATA\Quenmark\Heralder"

    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "${COMPANY}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION_DISPLAY}"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\heralder.exe,0"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegStr HKLM "${UNINSTALL_KEY}" "URLInfoAbout" "http://www.quenmark.com/"
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" "$0"
SectionEnd

Function un.onInit
    SetRegView 64
FunctionEnd

Section "Uninstall"
    Delete "$INSTDIR\heralder.exe"
    RMDir /r "$INSTDIR\html"
    RMDir /r "$INSTDIR\policy"
    Delete "$INSTDIR\uninstall.exe"
    ; Only our own files go: the folder stays if the user put anything else there.
    RMDir "$INSTDIR"
    RMDir "$PROGRAMFILES64\Quenmark"

    SetShellVarContext all
    Delete "$SMPROGRAMS\${MENU_FOLDER}\Heralder.lnk"
    Delete "$SMPROGRAMS\${MENU_FOLDER}\Heralder Manual.lnk"
    RMDir "$SMPROGRAMS\${MENU_FOLDER}"

    ; The daily run's shortcut would start a program that is no longer there.
    SetShellVarContext current
    Delete "$SMSTARTUP\Heralder.lnk"

    DeleteRegKey HKLM "${UNINSTALL_KEY}"

    ; What the user made is theirs: kept unless they say otherwise, and always
    ; kept by a silent uninstall. Other Quenmark products share the parent
    ; folder, so only this product's files leave it.
    MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 \
        "Do you also want to remove your Heralder settings, the list of messages you have seen and the downloaded pictures?" \
        /SD IDNO IDNO keep_user_data
    RMDir /r "$APPDATA\Quenmark\Heralder"
    Delete "$APPDATA\Quenmark\Heralder17.ini"
    Delete "$APPDATA\Quenmark\Backup of Heralder17.ini"
    Delete "$APPDATA\Quenmark\Backup of Backup of Heralder17.ini"
    RMDir "$APPDATA\Quenmark"
keep_user_data:
SectionEnd
