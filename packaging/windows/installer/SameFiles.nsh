; un.HaveSameFiles: takes two project folders without subfolders, pushed first to last, and leaves "same" when they hold the
; same names with the same bytes, else "". The five device files do not count: opening a project writes them again from the
; project file. Changes $0 to $5.
Function un.HaveSameFiles
  Pop $1
  Pop $0
  StrCpy $5 same
  Push $0
  Push $1
  Call un.CompareFiles
  Push $1
  Push $0
  Call un.CompareFiles
  Push $5
FunctionEnd

; Clears $5 unless every file of the first folder that counts is in the second with the same bytes. Keeps $0 and $1.
Function un.CompareFiles
  Exch $1
  Exch
  Exch $0
  FindFirst $2 $3 "$0\*.*"
  ${DoWhile} $3 != ""
    ${If} $3 != "."
    ${AndIf} $3 != ".."
    ${AndIf} $3 != "modbus.adr"
    ${AndIf} $3 != "ilmvar.def"
    ${AndIf} $3 != "stdmsg.ilm"
    ${AndIf} $3 != "altmsg.ilm"
    ${AndIf} $3 != "default.pls"
      Push "$0\$3"
      Push "$1\$3"
      Call un.CompareBytes
    ${EndIf}
    FindNext $2 $3
  ${Loop}
  FindClose $2
  Pop $0
  Pop $1
FunctionEnd

; Clears $5 unless both paths, pushed before, are files with the same bytes. Keeps all else.
Function un.CompareBytes
  Exch $1
  Exch
  Exch $0
  Push $2
  Push $3
  ClearErrors
  FileOpen $2 $0 r
  FileOpen $3 $1 r
  ${If} ${Errors}
    StrCpy $5 ""
  ${EndIf}
  ${DoWhile} $5 != ""
    ClearErrors
    FileReadByte $2 $0
    ${If} ${Errors}
      StrCpy $0 end
    ${EndIf}
    ClearErrors
    FileReadByte $3 $1
    ${If} ${Errors}
      StrCpy $1 end
    ${EndIf}
    ${If} $0 != $1
      StrCpy $5 ""
    ${ElseIf} $0 == end
      ${ExitDo}
    ${EndIf}
  ${Loop}
  FileClose $2
  FileClose $3
  Pop $3
  Pop $2
  Pop $0
  Pop $1
FunctionEnd
