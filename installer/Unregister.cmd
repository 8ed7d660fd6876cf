@echo off
rem Takes back what Register.cmd did: "Unregister" as administrator, or "Unregister user".
call "%~dp0Register.cmd" /u %*
