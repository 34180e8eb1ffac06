; Finds our programs that run from the folder of the installation, and asks them to close by their own windows, so
; that they save. They are told by their files: another copy, unpacked elsewhere, goes on running.
!include LogicLib.nsh

!define TRIES 30               ; of half a second each, until a program must have ended
!define QUERY_AND_WAIT 0x101000  ; SYNCHRONIZE and PROCESS_QUERY_LIMITED_INFORMATION
!define MOST_PROCESSES 4096

; RunningPrograms PREFIX: the functions, for the installer ("") or for the uninstaller ("un.").
!macro RunningPrograms prefix

; Process number in $R0; sets $R1 to the name of its file if it is one of ours in $INSTDIR, else to "".
Function ${prefix}NameOfOurs
    StrCpy $R1 ""
    System::Call 'kernel32::OpenProcess(i ${QUERY_AND_WAIT}, i 0, i $R0) p .R2'
    ${If} $R2 P= 0
        Return
    ${EndIf}
    System::Call 'kernel32::QueryFullProcessImageNameW(p R2, i 0, w .R3, *i ${NSIS_MAX_STRLEN}) i .R4'
    System::Call 'kernel32::CloseHandle(p R2)'
    ${If} $R4 = 0
        Return
    ${EndIf}
    StrLen $R5 "$INSTDIR\"
    StrCpy $R6 $R3 $R5
    StrCpy $R7 $R3 "" $R5
    ${If} $R6 == "$INSTDIR\"
        ${If} $R7 == "spellwick.exe"
        ${OrIf} $R7 == "spellwick-practice-game.exe"
        ${OrIf} $R7 == "spellwick-practice-tool.exe"
        ${OrIf} $R7 == "spellwick-bridge.exe"
            StrCpy $R1 $R7
        ${EndIf}
    ${EndIf}
FunctionEnd

; Sets $0 to the number of our programs that run.
Function ${prefix}CountRunning
    StrCpy $0 0
    System::Alloc ${MOST_PROCESSES}
    Pop $1
    System::Call 'kernel32::K32EnumProcesses(p r1, i ${MOST_PROCESSES}, *i .r2) i .r3'
    ${If} $3 <> 0
        IntOp $2 $2 / 4
        StrCpy $3 0
        ${While} $3 < $2
            IntOp $4 $3 * 4
            IntPtrOp $4 $1 + $4
            System::Call '*$4(i .R0)'
            Call ${prefix}NameOfOurs
            ${If} $R1 != ""
                IntOp $0 $0 + 1
            ${EndIf}
            IntOp $3 $3 + 1
        ${EndWhile}
    ${EndIf}
    System::Free $1
FunctionEnd

; Sends the message of the cross in the title bar to the main windows of our programs. In a silent run, where a
; box or a dialog keeps a main window from being closed, it goes to what is open in front of that.
Function ${prefix}CloseWindows
    StrCpy $9 0  ; the process whose main window is kept from being closed
    StrCpy $1 0
    ${Do}
        System::Call 'user32::FindWindowExW(p 0, p r1, p 0, p 0) p .r1'
        ${If} $1 P= 0
            ${Break}
        ${EndIf}
        System::Call 'user32::IsWindowVisible(p r1) i .r2'
        System::Call 'user32::GetWindowThreadProcessId(p r1, *i .R0)'
        Call ${prefix}NameOfOurs
        ${If} $2 = 0
        ${OrIf} $R1 == ""
            ${Continue}
        ${EndIf}
        ; Its other windows, as that of the timers, would take the message for a wish of the player.
        ${If} $R1 == "spellwick.exe"
            System::Call 'user32::GetWindowTextW(p r1, w .r4, i ${NSIS_MAX_STRLEN})'
            StrCpy $5 $4 10
            StrCpy $6 $4 1 10
            ${If} $5 != "Spellwick "
            ${OrIf} $6 < 1
                ${Continue}
            ${EndIf}
            System::Call 'user32::IsWindowEnabled(p r1) i .r3'
            ${If} $3 = 0
                StrCpy $9 $R0
            ${EndIf}
        ${EndIf}
        System::Call 'user32::PostMessageW(p r1, i ${WM_CLOSE}, p 0, p 0)'
    ${Loop}
    ${If} $9 <> 0
    ${AndIf} ${Silent}
        Call ${prefix}CloseWhatIsInFront
    ${EndIf}
FunctionEnd

; All that takes input in the process $9, whose main window takes none.
Function ${prefix}CloseWhatIsInFront
    StrCpy $1 0
    ${Do}
        System::Call 'user32::FindWindowExW(p 0, p r1, p 0, p 0) p .r1'
        ${If} $1 P= 0
            ${Break}
        ${EndIf}
        System::Call 'user32::IsWindowVisible(p r1) i .r2'
        System::Call 'user32::IsWindowEnabled(p r1) i .r3'
        System::Call 'user32::GetWindowThreadProcessId(p r1, *i .r4)'
        ${If} $2 <> 0
        ${AndIf} $3 <> 0
        ${AndIf} $4 = $9
            System::Call 'user32::PostMessageW(p r1, i ${WM_CLOSE}, p 0, p 0)'
        ${EndIf}
    ${Loop}
FunctionEnd

; Asks the player, or in a silent run nobody, and ends what runs. Sets $0 to how many programs still run.
Function ${prefix}EndRunningPrograms
    Call ${prefix}CountRunning
    ${If} $0 = 0
        Return
    ${EndIf}
    MessageBox MB_OKCANCEL|MB_ICONINFORMATION "Spellwick is running and has to be closed first.$\r$\n$\r$\nPress OK to close it. It saves everything, as at every end." /SD IDOK IDOK close
    Return
close:
    StrCpy $R9 0
    ${Do}
        ; Again now and then: a box may have been closed, a start may have come to its window.
        IntOp $R8 $R9 % 4
        ${If} $R8 = 0
            Call ${prefix}CloseWindows
        ${EndIf}
        Sleep 500
        Call ${prefix}CountRunning
        ${If} $0 = 0
            Return
        ${EndIf}
        IntOp $R9 $R9 + 1
    ${LoopUntil} $R9 >= ${TRIES}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Spellwick has not closed yet. Perhaps one of its windows waits for an answer.$\r$\n$\r$\nClose it yourself, then press Retry." /SD IDCANCEL IDRETRY close
FunctionEnd

!macroend
