@rem SPDX-FileCopyrightText: the pvItems32 authors
@rem SPDX-License-Identifier: MIT

@echo off
rem Registers the library for 32-bit and for 64-bit programs, with the tool of its own bitness.
rem As administrator: for every user. "Register user": for the current user alone. "Unregister" takes it back.
setlocal
set here=%~dp0
set options=/s
if /i "%~1"=="/u" set options=/s /u
if /i "%~1"=="/u" shift /1
if /i "%~1"=="user" set options=%options% /n /i:user

rem A 32-bit shell on 64-bit Windows sees the 64-bit tools as Sysnative; 32-bit Windows has no SysWOW64.
set tools32=%SystemRoot%\SysWOW64
set tools64=%SystemRoot%\System32
if exist "%SystemRoot%\Sysnative\regsvr32.exe" set tools64=%SystemRoot%\Sysnative
if exist "%tools32%\regsvr32.exe" goto both
call :run "%SystemRoot%\System32" x86
exit /b %errorlevel%

:both
call :run "%tools32%" x86
if errorlevel 1 exit /b 1
call :run "%tools64%" x64
exit /b %errorlevel%

:run
"%~1\regsvr32.exe" %options% "%here%%2\pvItems32.dll"
if errorlevel 1 goto failed
echo %2\pvItems32.dll: done
exit /b 0
:failed
echo %2\pvItems32.dll: failed with error %errorlevel%
exit /b 1
