@rem SPDX-FileCopyrightText: the pvItems32 authors
@rem SPDX-License-Identifier: MIT

@echo off
rem Takes back what Register.cmd did: "Unregister" as administrator, or "Unregister user".
call "%~dp0Register.cmd" /u %*
