; The installer of one word size, for the whole machine. The calling script gives: VERSION, BITS, STAGE (the files), LISTS (what
; it made of their names), SIZE in KB, ICON, OUTPUT.
;
; How it ends, by exit code: 0 done; 1 cancelled, or a newer version is there and stays; 2 this system is too old;
; 3 a file is in use, nothing was changed; 4 failed, nothing is installed; 5 (removing only) the files are gone, but the
; registration could not be undone.

Unicode true
!if ${BITS} == 64
  Target amd64-unicode
  !define OTHER_VIEW 32
  !define OTHER_SYSTEM "$WINDIR\SysWOW64"
!else
  Target x86-unicode
  !define OTHER_VIEW 64
  ; A 32-bit program is shown its own system folder under the name of the other; this is the way round it.
  !define OTHER_SYSTEM "$WINDIR\Sysnative"
!endif
SetCompressor /SOLID lzma

!include MUI2.nsh
!include LogicLib.nsh
!include WinVer.nsh
!include WordFunc.nsh

!define TITLE "Output Format Addon (${BITS} bit)"
!define COMPONENT "OrvOutFormat.ocx"
!define UNINSTALLER "uninstall.exe"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\OrvOutFormat"
!define MENU "$SMPROGRAMS\Output Format Addon (${BITS} bit)"
; The first build whose system library has what the component asks it about screens.
!define FIRST_BUILD 14393

Name "${TITLE}"
OutFile "${OUTPUT}"
BrandingText "${TITLE} ${VERSION}"
RequestExecutionLevel admin
ManifestDPIAware true
ManifestSupportedOS Win10
!if ${BITS} == 64
  InstallDir "$PROGRAMFILES64\OrvOutFormat"
!else
  InstallDir "$PROGRAMFILES32\OrvOutFormat"
!endif
; Over an earlier version, wherever that one was put.
InstallDirRegKey HKLM "${UNINSTALL_KEY}" "InstallLocation"
; Left to itself, a silent installation goes on without the file that it could not write.
AllowSkipFiles off

Var Changed ; 1 from the first change on

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Output Format Addon"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "${TITLE}: installer"
VIAddVersionKey "LegalCopyright" "The OrvOutFormat authors"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!insertmacro MUI_PAGE_LICENSE "${STAGE}\LICENSE.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

!macro End CODE TEXT
  MessageBox MB_OK|MB_ICONSTOP "${TEXT}" /SD IDOK
  SetErrorLevel ${CODE}
  Abort "${TEXT}"
!macroend

; A file that some process runs or holds cannot be opened for writing. Asked for each before anything is changed.
!macro CheckFree FILE
  ${If} ${FileExists} "${FILE}"
    ClearErrors
    FileOpen $R9 "${FILE}" a
    ${If} ${Errors}
      !insertmacro End 3 "${FILE} is in use. Close every program that shows the add-on, then try again. Nothing has been changed."
    ${EndIf}
    FileClose $R9
  ${EndIf}
!macroend

!include "${LISTS}\files.nsh"

; What was installed and nothing else: a folder that holds something of the user's stays.
!macro RemoveFiles
  SetOutPath "$TEMP"
  !insertmacro DeleteFiles
  Delete "$INSTDIR\${UNINSTALLER}"
  !insertmacro RemoveFolders
  RMDir "$INSTDIR"
!macroend

; Both word sizes share the component's name in the registry: when one goes, the other has to enter itself again.
!macro RegisterOther
  SetRegView ${OTHER_VIEW}
  ReadRegStr $R8 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  SetRegView ${BITS}
  ${If} $R8 != ""
  ${AndIf} ${FileExists} "$R8\${COMPONENT}"
  ${AndIf} ${FileExists} "${OTHER_SYSTEM}\regsvr32.exe"
    ExecWait '"${OTHER_SYSTEM}\regsvr32.exe" /s "$R8\${COMPONENT}"'
  ${EndIf}
!macroend

Function un.onInit
  SetShellVarContext all
  SetRegView ${BITS}
FunctionEnd

Function CheckSystem
  ${IfNot} ${AtLeastBuild} ${FIRST_BUILD}
    !insertmacro End 2 "${TITLE} needs Windows 10 version 1607, Windows Server 2016, or later."
  ${EndIf}
FunctionEnd

Function CheckVersion
  ReadRegStr $R0 HKLM "${UNINSTALL_KEY}" "DisplayVersion"
  ${If} $R0 != ""
    ${VersionCompare} "$R0" "${VERSION}" $R1
    ${If} $R1 == 1
      MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "The newer version $R0 is installed. Replace it by ${VERSION}?" /SD IDNO IDYES go_on
      SetErrorLevel 1
      Quit
      go_on:
    ${EndIf}
  ${EndIf}
FunctionEnd

Function .onInit
  SetShellVarContext all
  SetRegView ${BITS}
  Call CheckSystem
  Call CheckVersion
FunctionEnd

; No half installation stays, whatever it was that failed.
Function .onInstFailed
  ${If} $Changed == 1
    ${If} ${FileExists} "$INSTDIR\${COMPONENT}"
      ExecWait '"$SYSDIR\regsvr32.exe" /u /s "$INSTDIR\${COMPONENT}"'
    ${EndIf}
    !insertmacro RemoveFiles
    SetErrorLevel 4
  ${EndIf}
FunctionEnd

; The earlier version removes itself: it alone knows which files are its own.
Function RemoveEarlier
  ReadRegStr $R0 HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $R0 == ""
  ${OrIfNot} ${FileExists} "$R0\${UNINSTALLER}"
    Return
  ${EndIf}
  DetailPrint "Removing the earlier version"
  ExecWait '"$R0\${UNINSTALLER}" /S _?=$R0' $R1
  ${If} $R1 == 3
    !insertmacro End 3 "A file of the earlier version in $R0 is in use. Close every program that shows the add-on, then try again. Nothing has been changed."
  ${ElseIf} $R1 != 0
  ${AndIf} $R1 != 5
    !insertmacro End 4 "The earlier version in $R0 could not be removed (code $R1)."
  ${EndIf}
  Delete "$R0\${UNINSTALLER}"
  RMDir "$R0"
FunctionEnd

Section
  !insertmacro CheckFiles
  Call RemoveEarlier
  StrCpy $Changed 1
  ClearErrors
  !insertmacro InstallFiles
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  ${If} ${Errors}
    !insertmacro End 4 "The files could not be written to $INSTDIR. Nothing is installed."
  ${EndIf}

  DetailPrint "Registering the component"
  ExecWait '"$SYSDIR\regsvr32.exe" /s "$INSTDIR\${COMPONENT}"' $R1
  ${If} ${Errors}
  ${OrIf} $R1 != 0
    !insertmacro End 4 "The component could not be registered (regsvr32 ended with $R1). Nothing is installed."
  ${EndIf}

  CreateDirectory "${MENU}"
  !if /FileExists "${STAGE}\OrvOutFormat_0409.chm"
    CreateShortcut "${MENU}\User guide.lnk" "$INSTDIR\OrvOutFormat_0409.chm"
  !endif
  CreateShortcut "${MENU}\Bench host.lnk" "$INSTDIR\orvhost.exe" '"$INSTDIR\samples\conveyor.json"'

  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${TITLE}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\${COMPONENT}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "The OrvOutFormat authors"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
  SetErrorLevel 0
SectionEnd

Section Uninstall
  !insertmacro CheckFiles
  StrCpy $R1 0
  ${If} ${FileExists} "$INSTDIR\${COMPONENT}"
    DetailPrint "Undoing the registration"
    ClearErrors
    ExecWait '"$SYSDIR\regsvr32.exe" /u /s "$INSTDIR\${COMPONENT}"' $R1
    ${If} ${Errors}
      StrCpy $R1 -1
    ${EndIf}
  ${EndIf}
  !insertmacro RemoveFiles
  Delete "${MENU}\User guide.lnk"
  Delete "${MENU}\Bench host.lnk"
  RMDir "${MENU}"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
  !insertmacro RegisterOther
  SetErrorLevel 0
  ${If} $R1 != 0
    MessageBox MB_OK|MB_ICONEXCLAMATION "The files are removed, but the component's registration could not be undone (regsvr32 ended with $R1)." /SD IDOK
    SetErrorLevel 5
  ${EndIf}
SectionEnd
