; The installer for Windows, made by tools/package_installer, which defines:
;   VERSION, FOUR_NUMBERS  the version, and the same as four numbers
;   FOLDER                 the folder with all that is installed
;   WORK                   the folder of the pictures and of files.nsh, the list of what is installed
;   OUTPUT                 the installer to write
;   KILOBYTES              the size of what is installed
; For one user, without administrator. Silent: /S, /DESKTOP for the icon, /D=FOLDER as the last one.
Target amd64-unicode
SetCompressor /SOLID lzma
SetCompressorDictSize 64
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel user

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include WinVer.nsh
!include "${WORK}/files.nsh"

Var farewell
Var removeData
Var removeDataBox
Var keptTable
Var oldFolder
Var newFolder
Var hadIcon

!define NAME "Spellwick"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"
!define PROGRAMS_KEY "Software\${NAME}"
!define MENU "$SMPROGRAMS\${NAME}"
!define OWN_TABLE "$APPDATA\${NAME}\SpellData.txt"
!define ICON_ON_DESKTOP "$DESKTOP\${NAME}.lnk"

; Exit codes, beside 0 for done and 1 for "cancelled".
!define STILL_RUNNING 3
!define FOLDER_REFUSED 4
!define WINDOWS_TOO_OLD 5

; Windows 10 of May 2019, version 1903: the first that takes UTF-8 as a program's code page.
!define OLDEST_BUILD 18362

Name "${NAME}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\${NAME}"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "${NAME} ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${FOUR_NUMBERS}"
VIAddVersionKey "ProductName" "${NAME}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "${NAME} ${VERSION} Setup"
VIAddVersionKey "CompanyName" "The Spellwick makers"
VIAddVersionKey "LegalCopyright" "Copyright (c) 2026 The Spellwick makers"

!define MUI_ICON "${WORK}/spellwick.ico"
!define MUI_UNICON "${WORK}/spellwick.ico"
!define MUI_HEADERIMAGE
!define MUI_HEADERIMAGE_RIGHT
!define MUI_HEADERIMAGE_BITMAP "${WORK}/header.bmp"
!define MUI_HEADERIMAGE_UNBITMAP "${WORK}/header.bmp"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${WORK}/side.bmp"
!define MUI_UNWELCOMEFINISHPAGE_BITMAP "${WORK}/side.bmp"
!define MUI_ABORTWARNING
!define MUI_ABORTWARNING_TEXT "Spellwick is not installed yet. Stop here?"

!define MUI_WELCOMEPAGE_TITLE "Spellwick ${VERSION}"
!define MUI_WELCOMEPAGE_TEXT "A companion for spell casters in Ultima Online.$\r$\n$\r$\nIt is installed for you alone and needs no administrator. If you have it already, this version takes its place and your settings and characters are kept.$\r$\n$\r$\nSpellwick is free software under the MIT licence. It uses Qt under the GNU Lesser General Public License 3. All licences, and where the sources are, are told in the folder $\"licences$\"."
!insertmacro MUI_PAGE_WELCOME

!define MUI_PAGE_HEADER_TEXT "Where to install"
!define MUI_PAGE_HEADER_SUBTEXT "The folder for the program. Your settings are kept elsewhere."
!define MUI_DIRECTORYPAGE_TEXT_TOP "Spellwick goes into this folder. It must be one that you may write into without administrator."
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE TryFolder
!insertmacro MUI_PAGE_DIRECTORY

!insertmacro MUI_PAGE_INSTFILES

!define MUI_FINISHPAGE_TITLE "Spellwick is installed"
!define MUI_FINISHPAGE_TEXT "You find it in the Start menu. The tab Game of its settings shows the first steps.$\r$\n$\r$\nTo remove it, open Settings, Apps in Windows, or use $\"Uninstall Spellwick$\" in the Start menu."
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Start Spellwick"
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram
; The page has one more check box, which is meant for a text to show.
!define MUI_FINISHPAGE_SHOWREADME
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Put an icon on the desktop"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!define MUI_FINISHPAGE_SHOWREADME_FUNCTION MakeDesktopIcon
!insertmacro MUI_PAGE_FINISH

UninstPage custom un.ShowQuestion un.LeaveQuestion
!insertmacro MUI_UNPAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE "Spellwick is removed"
!define MUI_FINISHPAGE_TEXT "$farewell"
!insertmacro MUI_UNPAGE_FINISH

!insertmacro MUI_LANGUAGE English

!include "running_programs.nsh"
!insertmacro RunningPrograms ""
!insertmacro RunningPrograms "un."

; Ends a silent run with an exit code.
!macro Refuse code
    SetErrorLevel ${code}
    Quit
!macroend

; A folder that was named with /D= but cannot be, below a file for example, would silently be replaced by the usual
; one before any of this runs, and one in quotation marks would be missed. Takes it from the command line again.
Function TakeNamedFolder
    System::Call 'kernel32::GetCommandLineW() w .r0'
    StrLen $1 $0
    StrCpy $2 0
    ${While} $2 < $1
        StrCpy $3 $0 4 $2
        ${If} $3 S== " /D="
            IntOp $2 $2 + 4
            StrCpy $INSTDIR $0 "" $2
            Return
        ${ElseIf} $3 S== '"/D='
            IntOp $2 $2 + 4
            StrCpy $INSTDIR $0 -1 $2
            Return
        ${EndIf}
        IntOp $2 $2 + 1
    ${EndWhile}
FunctionEnd

Function .onInit
    SetShellVarContext current
    Call TakeNamedFolder
    ${IfNot} ${AtLeastBuild} ${OLDEST_BUILD}
        MessageBox MB_OK|MB_ICONSTOP "This Windows is too old for Spellwick. It needs Windows 10, version 1903 or later." /SD IDOK
        !insertmacro Refuse ${WINDOWS_TOO_OLD}
    ${EndIf}
FunctionEnd

; Sets $0 to "" if a file can be written into the folder; else to what to say.
Function CheckFolder
    StrCpy $0 "Spellwick cannot be installed into$\r$\n$INSTDIR$\r$\n$\r$\nYou may not write there. Choose another folder."
    ClearErrors
    CreateDirectory "$INSTDIR"
    ${If} ${Errors}
        Return
    ${EndIf}
    GetTempFileName $1 "$INSTDIR"
    ${If} ${Errors}
    ${OrIf} $1 == ""
        Return
    ${EndIf}
    Delete $1
    StrCpy $0 ""
FunctionEnd

Function TryFolder
    Call CheckFolder
    ${If} $0 != ""
        MessageBox MB_OK|MB_ICONEXCLAMATION $0
        Abort
    ${EndIf}
FunctionEnd

Function StartProgram
    SetOutPath "$INSTDIR"
    Exec '"$INSTDIR\spellwick.exe"'
FunctionEnd

Function MakeDesktopIcon
    SetOutPath "$INSTDIR"
    CreateShortCut "${ICON_ON_DESKTOP}" "$INSTDIR\spellwick.exe"
FunctionEnd

; A spell table beside the program that the player has edited: its time is not the one that was noted when it was
; installed. Sets $0 to 1 then, to 2 if nothing was noted, as in a folder that was unpacked, and else to 0.
!macro KeepTable prefix
Function ${prefix}LookAtTable
    StrCpy $0 0
    ${IfNot} ${FileExists} "$INSTDIR\SpellData.txt"
        Return
    ${EndIf}
    ReadRegStr $1 HKCU "${UNINSTALL_KEY}" "SpellDataTime"
    ${If} $1 == ""
        StrCpy $0 2
        Return
    ${EndIf}
    ${GetTime} "$INSTDIR\SpellData.txt" "MS" $2 $3 $4 $5 $6 $7 $8
    ${If} $1 != "$4-$3-$2 $6:$7:$8"
        StrCpy $0 1
    ${EndIf}
FunctionEnd

; Puts an edited table where Spellwick reads a player's own. If there is one, or if the table may just be an old one,
; it stays beside the new one.
; Sets $keptTable to its new place, to "" if there was nothing to keep.
Function ${prefix}KeepTable
    StrCpy $keptTable ""
    Call ${prefix}LookAtTable
    ${If} $0 = 0
        Return
    ${EndIf}
    ${If} $0 = 1
    ${AndIfNot} ${FileExists} "${OWN_TABLE}"
        CreateDirectory "$APPDATA\${NAME}"
        ClearErrors
        CopyFiles /SILENT "$INSTDIR\SpellData.txt" "${OWN_TABLE}"
        ${IfNot} ${Errors}
            StrCpy $keptTable "${OWN_TABLE}"
            Return
        ${EndIf}
    ${EndIf}
    StrCpy $keptTable "$INSTDIR\SpellData (yours).txt"
    Delete "$keptTable"
    Rename "$INSTDIR\SpellData.txt" "$keptTable"
FunctionEnd
!macroend
!insertmacro KeepTable ""
!insertmacro KeepTable "un."

; If Spellwick is installed in another folder, it moves: the old one is removed as its uninstaller does it, with the
; player's data kept. Sets $0 to 0, or to how many programs still run there.
Function LeaveOldFolder
    StrCpy $0 0
    ReadRegStr $oldFolder HKCU "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $oldFolder == ""
    ${OrIf} $oldFolder == $INSTDIR
    ${OrIfNot} ${FileExists} "$oldFolder\Uninstall.exe"
        Return
    ${EndIf}
    StrCpy $newFolder $INSTDIR
    StrCpy $INSTDIR $oldFolder
    Call EndRunningPrograms
    StrCpy $INSTDIR $newFolder
    ${If} $0 != 0
        Return
    ${EndIf}
    StrCpy $hadIcon 0
    ${If} ${FileExists} "${ICON_ON_DESKTOP}"
        StrCpy $hadIcon 1
    ${EndIf}
    ; With "_?=" it works where it is, so that it can be waited for, and cannot remove itself.
    ExecWait '"$oldFolder\Uninstall.exe" /S _?=$oldFolder'
    Delete "$oldFolder\Uninstall.exe"
    RMDir "$oldFolder"
FunctionEnd

Section
    Call CheckFolder
    ${If} $0 != ""
        MessageBox MB_OK|MB_ICONSTOP $0 /SD IDOK
        !insertmacro Refuse ${FOLDER_REFUSED}
    ${EndIf}
    Call EndRunningPrograms
    ${If} $0 != 0
        !insertmacro Refuse ${STILL_RUNNING}
    ${EndIf}
    Call LeaveOldFolder
    ${If} $0 != 0
        !insertmacro Refuse ${STILL_RUNNING}
    ${EndIf}

    Call KeepTable

    ClearErrors
    !insertmacro InstallFiles
    ${If} ${Errors}
        MessageBox MB_OK|MB_ICONSTOP "A file could not be written into$\r$\n$INSTDIR" /SD IDOK
        !insertmacro Refuse ${FOLDER_REFUSED}
    ${EndIf}
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\Uninstall.exe"

    CreateDirectory "${MENU}"
    CreateShortCut "${MENU}\${NAME}.lnk" "$INSTDIR\spellwick.exe"
    CreateShortCut "${MENU}\Start here.lnk" "$INSTDIR\Start here.txt"
    CreateShortCut "${MENU}\Practice game.lnk" "$INSTDIR\spellwick-practice-game.exe"
    CreateShortCut "${MENU}\Practice assist tool.lnk" "$INSTDIR\spellwick-practice-tool.exe"
    CreateShortCut "${MENU}\Uninstall ${NAME}.lnk" "$INSTDIR\Uninstall.exe"
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/DESKTOP" $1
    ${IfNot} ${Errors}
    ${OrIf} $hadIcon == 1
        Call MakeDesktopIcon
    ${EndIf}

    ${GetTime} "$INSTDIR\SpellData.txt" "MS" $2 $3 $4 $5 $6 $7 $8
    WriteRegStr HKCU "${UNINSTALL_KEY}" "SpellDataTime" "$4-$3-$2 $6:$7:$8"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The Spellwick makers"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\spellwick.exe"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${KILOBYTES}
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1

    ${If} $keptTable != ""
        MessageBox MB_OK|MB_ICONINFORMATION "The folder had a SpellData.txt that may be edited. It is now$\r$\n$keptTable" /SD IDOK
    ${EndIf}
SectionEnd

Function un.onInit
    SetShellVarContext current
    StrCpy $removeData 0
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/REMOVEDATA" $1
    ${IfNot} ${Errors}
        StrCpy $removeData 1
    ${EndIf}
FunctionEnd

Function un.ShowQuestion
    !insertmacro MUI_HEADER_TEXT "Remove Spellwick" "The program and its entries in the Start menu are removed."
    nsDialogs::Create 1018
    Pop $0
    ${NSD_CreateLabel} 0 0 100% 24u "Spellwick is removed from$\r$\n$INSTDIR"
    Pop $0
    ${NSD_CreateLabel} 0 30u 100% 50u "Your settings and characters stay, so that a later Spellwick finds them. They are in the folder$\r$\n$APPDATA\${NAME}$\r$\nand in the registry under$\r$\nHKEY_CURRENT_USER\${PROGRAMS_KEY}"
    Pop $0
    ${NSD_CreateCheckbox} 0 84u 100% 12u "Remove my &settings and characters too. This cannot be undone."
    Pop $removeDataBox
    ${If} $removeData == 1
        ${NSD_Check} $removeDataBox
    ${EndIf}
    GetDlgItem $0 $HWNDPARENT 1
    SendMessage $0 ${WM_SETTEXT} 0 "STR:&Remove"
    nsDialogs::Show
FunctionEnd

Function un.LeaveQuestion
    ${NSD_GetState} $removeDataBox $removeData
FunctionEnd

Section "Uninstall"
    Call un.EndRunningPrograms
    ${If} $0 != 0
        !insertmacro Refuse ${STILL_RUNNING}
    ${EndIf}

    StrCpy $farewell ""
    ${If} $removeData == 1
        Delete "$INSTDIR\SpellData (yours).txt"
    ${Else}
        Call un.KeepTable
    ${EndIf}
    !insertmacro RemoveFiles
    Delete "$INSTDIR\Uninstall.exe"
    SetOutPath "$TEMP"
    RMDir "$INSTDIR"  ; only if it is empty: what the player has put there stays
    ${If} ${FileExists} "$INSTDIR\*.*"
        StrCpy $farewell "What you had put into the program's folder is still there:$\r$\n$INSTDIR$\r$\n$\r$\n"
    ${EndIf}

    Delete "${MENU}\${NAME}.lnk"
    Delete "${MENU}\Start here.lnk"
    Delete "${MENU}\Practice game.lnk"
    Delete "${MENU}\Practice assist tool.lnk"
    Delete "${MENU}\Uninstall ${NAME}.lnk"
    RMDir "${MENU}"
    Delete "${ICON_ON_DESKTOP}"
    DeleteRegKey HKCU "${UNINSTALL_KEY}"

    ${If} $removeData == 1
        RMDir /r "$APPDATA\${NAME}"
        DeleteRegKey HKCU "${PROGRAMS_KEY}"
        StrCpy $farewell "$farewellYour settings and characters are removed too."
    ${Else}
        StrCpy $farewell "$farewellYour settings and characters are still there, in the folder$\r$\n$APPDATA\${NAME}$\r$\nand in the registry under$\r$\nHKEY_CURRENT_USER\${PROGRAMS_KEY}"
    ${EndIf}
SectionEnd
