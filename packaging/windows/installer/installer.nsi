; The installer for the present user: needs no rights, because everything lies in the user's own folders and registry. The
; folder stays writable, for the list of recent projects lives beside the program.
;   makensis -DVERSION=... -DPACKAGE=<folder of the zip> -DFILES=<list of remove commands> -DOUTPUT=<setup.exe> installer.nsi
; setup.exe /S installs without a window, /NOORX leaves .orx files alone, /D=<folder> chooses the folder (last, unquoted).
; An exit code of 2 says that the installed program is running.
Unicode true
ManifestDPIAware true
SetCompressor /SOLID lzma
RequestExecutionLevel user
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include "${__FILEDIR__}/SameFiles.nsh"

!define PRODUCT "Orvista Message Editor"
!define SIMULATOR "Simulated LX-400D Display"
!define SETTINGS "Software\${PRODUCT}"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define CLASSES "Software\Classes"
!define PROJECT_TYPE "OrvistaMessageEditor.Project"
!define EXAMPLE "examples\pumpstation"

Name "${PRODUCT}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\${PRODUCT}"
InstallDirRegKey HKCU "${SETTINGS}" Folder
BrandingText "${PRODUCT} ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${NUMBERS}"
VIAddVersionKey ProductName "${PRODUCT}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "${PRODUCT} installer"
VIAddVersionKey LegalCopyright "${COPYRIGHT}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\orvista-editor.exe"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; A program that runs holds its file: nothing is touched until it has ended.
!macro WaitUntilNothingRuns
  ${Do}
    StrCpy $0 ""
    ${ForEach} $1 1 3 + 1
      StrCpy $2 "orvista-editor.exe"
      ${If} $1 = 2
        StrCpy $2 "lx400d-simulator.exe"
      ${ElseIf} $1 = 3
        StrCpy $2 "orvista.exe"
      ${EndIf}
      ${If} ${FileExists} "$INSTDIR\$2"
        ClearErrors
        FileOpen $3 "$INSTDIR\$2" a
        ${If} ${Errors}
          StrCpy $0 $2
        ${Else}
          FileClose $3
        ${EndIf}
      ${EndIf}
    ${Next}
    ${If} $0 == ""
      ${ExitDo}
    ${EndIf}
    ${If} ${Silent}
      SetErrorLevel 2
      Abort
    ${EndIf}
    ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$0 is running. Close it and try again." IDCANCEL`
      SetErrorLevel 2
      Abort
    ${EndIf}
  ${Loop}
!macroend

; Takes away what an installation made, but not the example once it was worked on, the list of recent projects, or any
; file of somebody else. FILES removes exactly the packed ones.
!macro RemoveProgram
  InitPluginsDir
  SetOutPath "$PLUGINSDIR\example"
  File "${PACKAGE}\${EXAMPLE}\*"
  Push "$PLUGINSDIR\example"
  Push "$INSTDIR\${EXAMPLE}"
  Call un.HaveSameFiles
  Pop $0
  ${If} $0 == same
    RMDir /r "$INSTDIR\${EXAMPLE}"
    RMDir "$INSTDIR\examples"
  ${EndIf}
  SetOutPath "$TEMP"
  !include "${FILES}"
  Delete "$INSTDIR\uninstall.exe"
  Delete "$SMPROGRAMS\${PRODUCT}\${PRODUCT}.lnk"
  Delete "$SMPROGRAMS\${PRODUCT}\${SIMULATOR}.lnk"
  RMDir "$SMPROGRAMS\${PRODUCT}"
  ReadRegStr $0 HKCU "${CLASSES}\.orx" ""
  ${If} $0 == "${PROJECT_TYPE}"
    DeleteRegValue HKCU "${CLASSES}\.orx" ""
    DeleteRegKey /ifempty HKCU "${CLASSES}\.orx"
  ${EndIf}
  DeleteRegKey HKCU "${CLASSES}\${PROJECT_TYPE}"
  DeleteRegKey HKCU "${UNINSTALL}"
  DeleteRegKey HKCU "${SETTINGS}"
  ${RefreshShellIcons}
!macroend

Section "-Earlier version"
  !insertmacro WaitUntilNothingRuns
  ; Where it is installed already, whatever the folder chosen now.
  ReadRegStr $1 HKCU "${SETTINGS}" Folder
  ${If} $1 != ""
  ${AndIf} ${FileExists} "$1\uninstall.exe"
    InitPluginsDir
    CopyFiles /SILENT "$1\uninstall.exe" "$PLUGINSDIR\earlier.exe"
    ClearErrors
    ExecWait '"$PLUGINSDIR\earlier.exe" /S /UPGRADE _?=$1' $0
    ${If} ${Errors}
    ${OrIf} $0 <> 0
      SetErrorLevel 2
      Abort "The installed version cannot be removed."
    ${EndIf}
    ${If} $1 != $INSTDIR
      CreateDirectory "$INSTDIR"
      Rename "$1\history.cache" "$INSTDIR\history.cache"
      RMDir "$1"
    ${EndIf}
  ${EndIf}
SectionEnd

Section "${PRODUCT}" editor
  SectionIn RO
  SetOutPath "$INSTDIR"
  File /r /x examples "${PACKAGE}\*"
  ; An example that was worked on is the user's.
  ${IfNot} ${FileExists} "$INSTDIR\${EXAMPLE}\*.*"
    SetOutPath "$INSTDIR\${EXAMPLE}"
    File "${PACKAGE}\${EXAMPLE}\*"
  ${EndIf}
  WriteUninstaller "$INSTDIR\uninstall.exe"

  WriteRegStr HKCU "${SETTINGS}" Folder "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" DisplayName "${PRODUCT}"
  WriteRegStr HKCU "${UNINSTALL}" DisplayVersion "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" DisplayIcon "$INSTDIR\orvista-editor.exe"
  WriteRegStr HKCU "${UNINSTALL}" InstallLocation "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" NoModify 1
  WriteRegDWORD HKCU "${UNINSTALL}" NoRepair 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL}" EstimatedSize $0

  SetOutPath "$INSTDIR" ; where the entries start their programs
  CreateDirectory "$SMPROGRAMS\${PRODUCT}"
  CreateShortCut "$SMPROGRAMS\${PRODUCT}\${PRODUCT}.lnk" "$INSTDIR\orvista-editor.exe"
  CreateShortCut "$SMPROGRAMS\${PRODUCT}\${SIMULATOR}.lnk" "$INSTDIR\lx400d-simulator.exe"
SectionEnd

Section "Open .orx projects by a double click" association
  WriteRegStr HKCU "${CLASSES}\.orx" "" "${PROJECT_TYPE}"
  WriteRegStr HKCU "${CLASSES}\${PROJECT_TYPE}" "" "Orvista message project"
  WriteRegStr HKCU "${CLASSES}\${PROJECT_TYPE}\DefaultIcon" "" "$INSTDIR\orvista-editor.exe,0"
  WriteRegStr HKCU "${CLASSES}\${PROJECT_TYPE}\shell\open\command" "" '"$INSTDIR\orvista-editor.exe" "%1"'
  ${RefreshShellIcons}
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${editor} "The editor, the simulated display, the command line, the help and an example."
  !insertmacro MUI_DESCRIPTION_TEXT ${association} "Projects open in the editor."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/NOORX" $1
  ${IfNot} ${Errors}
    !insertmacro UnselectSection ${association}
  ${EndIf}
  ; An upgrade does as the last installation did.
  ReadRegStr $0 HKCU "${SETTINGS}" Folder
  ReadRegStr $1 HKCU "${CLASSES}\${PROJECT_TYPE}" ""
  ${If} $0 != ""
  ${AndIf} $1 == ""
    !insertmacro UnselectSection ${association}
  ${EndIf}
FunctionEnd

Section Uninstall
  !insertmacro WaitUntilNothingRuns
  !insertmacro RemoveProgram
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/UPGRADE" $1
  ${If} ${Errors}
    Delete "$INSTDIR\history.cache"
  ${EndIf}
  RMDir "$INSTDIR" ; stays where it holds anything
SectionEnd
