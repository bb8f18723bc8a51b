; The installer: for the machine when it runs elevated, else for the user. /S asks nothing, /CurrentUser and /AllUsers
; choose. Both bitnesses of the server are registered where the system has both.
Target ${TARGET}
!pragma warning disable 6012 ; of labels that the library for conditions leaves unused
SetCompressor /SOLID lzma
Name "Quill1XML ${VERSION}"
BrandingText "The Quill1XML developers"
OutFile "${OUTPUT}"
ManifestSupportedOS all
VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey ProductName "Quill1XML"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Installs Quill1XML"
VIAddVersionKey CompanyName "The Quill1XML developers"
VIAddVersionKey LegalCopyright "Copyright (c) 2026 the Quill1XML developers"

!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quill1XML"
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_INSTDIR "Quill1XML"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${ENTRY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME InstallLocation
!define MULTIUSER_USE_PROGRAMFILES64
!include MultiUser.nsh
!include MUI2.nsh
!include x64.nsh
!include FileFunc.nsh
!include "${FILES}"

!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_LICENSE "${SOURCE}/LICENSE.txt"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

; A library that a host has loaded cannot be deleted, but it can be renamed, which makes room for another version.
!macro RemoveLibrary FILE
    ClearErrors
    Delete "${FILE}"
    ${If} ${Errors}
        GetTempFileName $1 $INSTDIR
        Delete $1
        Rename "${FILE}" $1
        Delete /REBOOTOK $1
    ${EndIf}
!macroend

; Sets $2 to the registration program of a bitness, or to nothing where the system has none.
!macro FindRegistrar BITS
    StrCpy $2 "$WINDIR\System32\regsvr32.exe"
    ${If} ${RunningX64}
        !if ${BITS} == 32
            StrCpy $2 "$WINDIR\SysWOW64\regsvr32.exe"
        !else if ${NSIS_PTR_SIZE} == 4
            StrCpy $2 "$WINDIR\Sysnative\regsvr32.exe"
        !endif
    ${ElseIf} ${BITS} == 64
        StrCpy $2 ""
    ${EndIf}
    ${IfNot} ${FileExists} $2
        StrCpy $2 ""
    ${EndIf}
!macroend

; Registers for the machine or the user; OPTION is /u to undo it.
!macro Register BITS FOLDER OPTION
    !insertmacro FindRegistrar ${BITS}
    ${If} $2 != ""
        StrCpy $3 "/s ${OPTION}"
        ${If} $MultiUser.InstallMode == CurrentUser
            StrCpy $3 "$3 /n /i:user"
        ${EndIf}
        ExecWait '"$2" $3 "$INSTDIR\${FOLDER}\Quill1XML.dll"' $0
    ${Else}
        StrCpy $0 0
    ${EndIf}
!macroend

!macro RegisterOrEnd BITS FOLDER
    !insertmacro Register ${BITS} ${FOLDER} ""
    ${If} $0 != 0
        SetErrorLevel 2
        Abort "$INSTDIR\${FOLDER}\Quill1XML.dll cannot be registered"
    ${EndIf}
!macroend

Function .onInit
    ; The folder that /D= names, if it does.
    StrCpy $R0 $INSTDIR
    !insertmacro MULTIUSER_INIT
    ${If} $R0 != ""
        StrCpy $INSTDIR $R0
    ${EndIf}
FunctionEnd

Function un.onInit
    !insertmacro MULTIUSER_UNINIT
    ReadRegStr $0 HKCU "${ENTRY}" InstallLocation
    ${If} $0 == $INSTDIR
        Call un.MultiUser.InstallMode.CurrentUser
    ${EndIf}
FunctionEnd

Section
    ; What an older version brought goes first, wherever it is.
    ReadRegStr $4 SHCTX "${ENTRY}" InstallLocation
    ${If} ${FileExists} "$4\uninstall.exe"
        ExecWait '"$4\uninstall.exe" /S _?=$4'
        Delete "$4\uninstall.exe"
        RMDir $4
    ${EndIf}

    !insertmacro InstallCommon
    !insertmacro Installx86
    !insertmacro RegisterOrEnd 32 x86
    ${If} ${RunningX64}
        !insertmacro Installx64
        !insertmacro RegisterOrEnd 64 x64
    ${EndIf}
    SetOutPath $INSTDIR
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateShortcut "$SMPROGRAMS\Quill1XML manual.lnk" "$INSTDIR\manual\manual.html"

    WriteRegStr SHCTX "${ENTRY}" DisplayName "Quill1XML"
    WriteRegStr SHCTX "${ENTRY}" DisplayVersion "${VERSION}"
    WriteRegStr SHCTX "${ENTRY}" Publisher "The Quill1XML developers"
    WriteRegStr SHCTX "${ENTRY}" InstallLocation $INSTDIR
    WriteRegStr SHCTX "${ENTRY}" UninstallString '"$INSTDIR\uninstall.exe"'
    WriteRegStr SHCTX "${ENTRY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD SHCTX "${ENTRY}" NoModify 1
    WriteRegDWORD SHCTX "${ENTRY}" NoRepair 1
    ${GetSize} $INSTDIR "/S=0K" $0 $1 $2
    WriteRegDWORD SHCTX "${ENTRY}" EstimatedSize $0
SectionEnd

Section Uninstall
    !insertmacro Register 64 x64 /u
    !insertmacro Register 32 x86 /u
    SetOutPath $TEMP
    !insertmacro RemoveAll
    Delete "$SMPROGRAMS\Quill1XML manual.lnk"
    DeleteRegKey SHCTX "${ENTRY}"
    Delete "$INSTDIR\uninstall.exe"
    RMDir $INSTDIR
SectionEnd
