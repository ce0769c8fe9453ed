; The installer: for one user, without administrator's rights. packaging/windows/make passes
;   VERSION, SIZE (in KB), OUTPUT (the file to write), ICON
;   PROGRAM   the folder with the files to install
;   REMOVAL   a file of the commands that remove exactly these files
; /S installs or removes without a window, /D=FOLDER as the last word installs elsewhere. With a program still running, both
; wait for half a minute, then end with 2 and change nothing.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!include LogicLib.nsh
!include MUI2.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\ZEP Lumo"
!define MENU "$SMPROGRAMS\ZEP Lumo"

Name "ZEP Lumo"
BrandingText "ZEP Lumo ${VERSION}"
OutFile "${OUTPUT}"
; Not asked for: a folder with other contents could have templates of the same names.
InstallDir "$LOCALAPPDATA\Programs\ZEP Lumo"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" InstallLocation

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${NSISDIR}/Contrib/Graphics/Wizard/nsis3-metro.bmp"
!define MUI_WELCOMEPAGE_TEXT "ZEP Lumo ${VERSION} s'installe pour vous seul, sans droits d'administrateur. Une version précédente est \
    remplacée ; les cabinets restent comme ils sont.$\r$\n$\r$\nCliquez sur Installer."
!define MUI_FINISHPAGE_RUN "$INSTDIR\zep_lumo.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE French

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=${LANG_FRENCH} ProductName "ZEP Lumo"
VIAddVersionKey /LANG=${LANG_FRENCH} FileDescription "Installation de ZEP Lumo"
VIAddVersionKey /LANG=${LANG_FRENCH} CompanyName "ZEP Lumo maintainers"
VIAddVersionKey /LANG=${LANG_FRENCH} LegalCopyright "2026 ZEP Lumo maintainers"
VIAddVersionKey /LANG=${LANG_FRENCH} FileVersion "${VERSION}"

; Removes the library without which none of the programs starts, which fails while one of them runs: from then on the other
; files are free.
!macro StopUse un
Function ${un}StopUse
    StrCpy $0 0
    ${Do}
        ClearErrors
        Delete "$INSTDIR\Qt6Core.dll"
        ${IfNot} ${Errors}
            Return
        ${EndIf}
        ${If} ${Silent}
            Sleep 1000
            IntOp $0 $0 + 1
        ${ElseIf} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "ZEP Lumo est ouvert, ou une commande practice est en cours.$\r$\n$\r$\nQuittez le programme, puis choisissez Réessayer." IDCANCEL`
            StrCpy $0 30
        ${EndIf}
    ${LoopUntil} $0 = 30
    SetErrorLevel 2
    Quit
FunctionEnd
!macroend
!insertmacro StopUse ""
!insertmacro StopUse "un."

Section
    ${If} ${FileExists} "$INSTDIR\ZEP_ONE.MDB"
        MessageBox MB_ICONSTOP "$INSTDIR est le dossier d'un cabinet." /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
    ${If} ${FileExists} "$INSTDIR\Uninstall.exe"
        Call StopUse
        ExecWait '"$INSTDIR\Uninstall.exe" /S _?=$INSTDIR' ; files that the new version doesn't have, too
    ${EndIf}
    SetOutPath "$INSTDIR"
    File /r "${PROGRAM}/*"
    WriteUninstaller "$INSTDIR\Uninstall.exe"

    CreateDirectory "${MENU}"
    SetOutPath "$DOCUMENTS" ; where the programs start
    CreateShortCut "${MENU}\ZEP Lumo.lnk" "$INSTDIR\zep_lumo.exe"
    CreateShortCut "${MENU}\Commandes de ZEP Lumo.lnk" "$SYSDIR\cmd.exe" '/k "set PATH=$INSTDIR;%PATH%"' "$INSTDIR\zep_lumo.exe" 0 \
        SW_SHOWNORMAL "" "Fenêtre où taper les commandes practice"

    WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayName "ZEP Lumo"
    WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\zep_lumo.exe"
    WriteRegStr HKCU "${UNINSTALL_KEY}" Publisher "ZEP Lumo maintainers"
    WriteRegStr HKCU "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" EstimatedSize ${SIZE}
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoModify 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoRepair 1
SectionEnd

Section Uninstall
    Call un.StopUse
    !include "${REMOVAL}"
    Delete "$INSTDIR\Uninstall.exe"
    SetOutPath "$TEMP" ; a current folder can't be removed
    RMDir "$INSTDIR"
    RMDir "$LOCALAPPDATA\Programs" ; unless it has other programs
    Delete "${MENU}\ZEP Lumo.lnk"
    Delete "${MENU}\Commandes de ZEP Lumo.lnk"
    RMDir "${MENU}"
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
