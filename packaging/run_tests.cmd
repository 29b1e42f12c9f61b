@echo off
rem Runs every test of this folder on a Windows machine without tools, and ends with the count:
rem
rem   run_tests.cmd [WORK_FOLDER]
rem
rem It takes some minutes; windows may open and close. The tests work in a folder of their own, whose path
rem may hold no blanks and which is removed when all have passed. What they print is kept in "log" beside
rem this file, whose own folder needs a name in the system's code page. Without an argument it waits for a key in the end.
rem
rem Exit status: 0 when none failed, 1 when some did, 2 when they could not run.
setlocal EnableExtensions DisableDelayedExpansion
set "kit=%~dp0"
set "PATH=%SystemRoot%\System32;%SystemRoot%"
for %%V in (JVM_HOME CONTAINER_HOME QUORVEL_HOME CLASSPATH JDK_JAVA_OPTIONS JAVA_TOOL_OPTIONS _JAVA_OPTIONS) do set "%%V="
set "work=%~1"
rem TEMP by its short name, as users' names have blanks.
if not defined work for %%D in ("%TEMP%") do set "work=%%~sD\quorvel_tests"
if not "%work%"=="%work: =%" if "%~1"=="" set "work=%PUBLIC%\quorvel_tests"
if not "%work%"=="%work: =%" echo The path of the work folder holds a blank: "%work%"
if not "%work%"=="%work: =%" exit /b 2
if exist "%work%\*" rmdir /s /q "%work%"
mkdir "%work%" 2>nul
if not exist "%work%\*" echo The work folder cannot be made: "%work%"
if not exist "%work%\*" exit /b 2
if not exist "%kit%log\*" mkdir "%kit%log" 2>nul
if not exist "%kit%log\*" echo Unpack the archive into a folder that can be written to: "%kit%"
if not exist "%kit%log\*" exit /b 2
set "passed=0"
set "failed=0"
set "skipped=0"
pushd "%kit%log"
for %%T in (..\bin\*_test.exe) do call :run %%~nT
for %%T in (..\bin\*_test.exe) do call :show %%~nT
popd
if "%failed%"=="0" rmdir /s /q "%work%"
set "line=%passed% passed, %failed% failed"
if not "%skipped%"=="0" set "line=%line%, %skipped% skipped"
echo %line%
rem After a double click the window would close at once.
if "%~1"=="" pause >nul
if "%passed%%failed%"=="00" exit /b 2
if not "%failed%"=="0" exit /b 1
exit /b 0

rem Counted as ./test of the sources does: a test that was begun and has no result (a crash) failed, and so
rem did a program whose tests passed while itself did not.
:run
echo %1
mkdir "%work%\%1"
pushd "%work%\%1"
"%kit%bin\%1.exe" >"%kit%log\%1.txt" 2>&1 <nul
set "status=%errorlevel%"
popd
set "begun=0"
set "ok=0"
set "over=0"
for /f "tokens=6" %%W in ('find "[  SKIPPED ] " %1.txt') do if "%%W"=="ms)" set /a "over+=1"
for /f "tokens=2" %%W in ('find "[ RUN      ] " %1.txt') do if "%%W"=="RUN" set /a "begun+=1"
for /f "tokens=2" %%W in ('find "[       OK ] " %1.txt') do if "%%W"=="OK" set /a "ok+=1"
set /a "lost=begun-ok-over"
if not "%status%"=="0" if "%lost%"=="0" set "lost=1"
if "%begun%"=="0" set "lost=1"
set /a "passed+=ok"
set /a "failed+=lost"
set /a "skipped+=over"
set "lost_%1=%lost%"
exit /b 0

rem What failed, and why tests were passed over.
:show
call set "lost=%%lost_%1%%"
if not "%lost%"=="0" echo.
if not "%lost%"=="0" echo ---- %1 failed:
if not "%lost%"=="0" type %1.txt
if "%lost%"=="0" type %1.txt | find "passed over: "
exit /b 0
