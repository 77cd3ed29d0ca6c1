@echo off
rem SPDX-License-Identifier: MIT
rem Enters the modules into the registry; with /u takes them out again. Needs an administrator's rights.
regsvr32 /s %1 "%~dp0bin\Larynth.dll"
if errorlevel 1 exit /b 1
regsvr32 /s %1 "%~dp0bin\LarynthCompanion.dll"
if errorlevel 1 exit /b 1
