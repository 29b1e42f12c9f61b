@echo off
rem Puts the launcher into a Java home, or brings the one that is there up to date.
rem
rem   install.cmd JAVA_HOME [/mode M] [/jvm HOME] [/container HOME] [/quorvel HOME]
rem
rem   JAVA_HOME       the Java home whose java.exe and javaw.exe the launcher replaces
rem   /mode M         advanced, legacy, patch, secure or ri (without it: ri)
rem   /jvm HOME       the Java home that runs in the modes patch, secure and ri
rem   /container HOME the Java home that runs in the modes advanced and legacy
rem   /quorvel HOME   the folder with quorvel.jar
rem
rem The options go into a new launcher.cfg; one that is there stays as it is. A home that the mode
rem needs and that is not given must stand in the variable JVM_HOME, CONTAINER_HOME or QUORVEL_HOME.
rem
rem Exit status
rem   0  done
rem   1  refused, or failed and put back: the Java home is as it was
rem   2  wrong usage
rem   3  installed, but by explain_launch a launch would not go through
rem   4  done, but a launcher that is still running was left beside as *.quorvel-old
rem
rem For whoever works on it: delayed expansion stays off, as it would eat exclamation marks in paths, and
rem no path is an argument of call, which takes percent signs and carets apart once more. Instead the
rem script goes into the Java home, where every name is plain; the few paths that are left stand in
rem variables, always within quotes. Nothing is overwritten: a file is made ready under a name of its
rem own and renamed, and whether ren and del did their work is seen from the files, as they do not tell.
rem uninstall.cmd is this script with the first argument /uninstall.
setlocal EnableExtensions DisableDelayedExpansion
set "package=%~dp0"
set "kept_mark=.quorvel-original"
set "new_mark=.quorvel-new"
set "old_mark=.quorvel-old"
set "written=Written by install.cmd; uninstall.cmd removes this file as long as this line stands in it."
for %%V in (mode jvm container quorvel known target places undo fault is_home is_installed left_over) do set "%%V="
set "status=0"
set "task=install"

if /i "%~1"=="/uninstall" set "task=uninstall"
if "%task%"=="uninstall" shift /1
set "home=%~1"
if not defined home goto usage
if "%home:~0,1%"=="/" goto usage
if "%home:~-1%"=="\" if not "%home:~-2%"==":\" set "home=%home:~0,-1%"
:next_option
shift /1
if "%~1"=="" goto options_read
if "%task%"=="uninstall" goto usage
if "%~2"=="" goto usage
set "option="
for %%O in (mode jvm container quorvel) do if /i "%~1"=="/%%O" set "option=%%O"
if not defined option goto usage
set "value=%~f2"
if "%value:~-1%"=="\" if not "%value:~-2%"==":\" set "value=%value:~0,-1%"
if "%option%"=="mode" set "value=%~2"
set "%option%=%value%"
shift /1
goto next_option

:options_read
call :choose_search
if not defined fault call :enter_home
if defined fault goto refused
for %%F in (bin jre\bin) do for %%N in (java.exe javaw.exe) do if not defined fault call :check_place %%F %%N
if not defined fault if not defined is_home set "fault=it is no Java home, neither bin\java.exe nor jre\bin\java.exe is there"
if not defined fault call :check_configuration
if defined fault goto refused
call :remove_left_overs
if defined left_over set "fault=%left_over%, from an earlier run, is still running; end it first"
if defined fault goto refused
goto %task%

:install
if not exist launcher.cfg call :check_homes
if defined fault goto refused
for %%P in (%places%) do if not defined fault call :make_ready %%~P
if not defined fault if not exist launcher.cfg call :write_configuration
for %%P in (%places%) do if not defined fault call :put_in %%~P
if not defined fault if exist launcher.cfg%new_mark% call :rename . launcher.cfg%new_mark% launcher.cfg
if defined fault goto put_back
call :remove_left_overs
call :explain
goto done

:uninstall
if not defined is_installed echo There is no launcher in "%here%".
for %%P in (%places%) do if not defined fault call :restore %%~P
if not defined fault call :take_configuration_out
if defined fault goto put_back
call :remove_left_overs
goto done

:done
if not "%left_over%"=="" if "%status%"=="0" set "status=4"
if not "%left_over%"=="" echo Still running: %left_over%; run the script again when it has ended.
popd
endlocal & exit /b %status%

:usage
if "%task%"=="install" echo usage: install.cmd JAVA_HOME [/mode M] [/jvm HOME] [/container HOME] [/quorvel HOME]
if "%task%"=="install" echo        M is one of advanced, legacy, patch, secure, ri
if "%task%"=="uninstall" echo usage: uninstall.cmd JAVA_HOME
endlocal & exit /b 2

:refused
echo Refused, nothing was changed in "%home%":
echo %fault%.
popd
endlocal & exit /b 1

rem ---- looking

rem findstr finds the label that every version of the launcher holds. Where findstr is a stub that finds
rem everything (Wine 8) or reads no binary file, find has to do, which reads a line up to its first zero
rem byte: this message begins a line. Whichever is taken must tell the package's own launcher.
:choose_search
pushd "%package%"
set "search="%SystemRoot%\System32\findstr.exe" /l /c:"
set "mark=QUORVEL_VERSION="
call :try_search
if "%found%"=="launcher" popd & exit /b 0
set "search="%SystemRoot%\System32\find.exe" "
set "mark=java doesn't exist in"
call :try_search
if not "%found%"=="launcher" set "fault=the package is not complete, its bin\java.exe is missing or no launcher"
popd
exit /b 0

:try_search
set "found=none"
if not exist bin\java.exe exit /b 0
call :recognise bin\java.exe found
%search%"no launcher holds this text" bin\java.exe >nul 2>nul
if not errorlevel 1 set "found=everything"
exit /b 0

rem recognise FILE VARIABLE: "launcher" or "other".
:recognise
set "%2=other"
%search%"%mark%" %1 >nul 2>nul
if not errorlevel 1 set "%2=launcher"
exit /b 0

:enter_home
if not exist "%home%\*" set "fault=there is no such folder"
if defined fault exit /b 0
pushd "%home%" 2>nul
if errorlevel 1 set "fault=the folder cannot be entered"
if defined fault exit /b 0
rem A launcher in jre\bin takes the folder above jre for its home, and looks for launcher.cfg there.
set "here=%CD%"
if /i "%here:~-4%"=="\jre" set "fault=give the folder above jre, whose jre\bin is served as well"
exit /b 0

rem A place is an item "FOLDER NAME STANDING KEPT" of the list: what stands there and what was kept, each
rem none, launcher or other.
:check_place
for %%P in (%1\%2 %1\%2%kept_mark% %1\%2%new_mark% %1\%2%old_mark%) do if exist %%P\* set "fault=%%P is a folder"
if defined fault exit /b 0
set "standing=none"
set "kept=none"
if exist %1\%2 call :recognise %1\%2 standing
if exist %1\%2%kept_mark% call :recognise %1\%2%kept_mark% kept
if "%standing%-%kept%"=="none-none" exit /b 0
set "places=%places% "%1 %2 %standing% %kept%""
if "%2"=="java.exe" set "is_home=yes"
if not "%standing%-%kept%"=="other-none" set "is_installed=yes"
if "%standing%-%kept%"=="launcher-none" set "fault=%1\%2 is the launcher, but what it replaced, %1\%2%kept_mark%, is missing"
if "%kept%"=="launcher" set "fault=%1\%2%kept_mark% should be what the launcher replaced, but is a launcher itself"
if not exist %1\%2 exit /b 0
rem What cannot be read cannot be recognised.
type %1\%2 >nul 2>nul
if errorlevel 1 set "fault=%1\%2 cannot be read"
exit /b 0

:check_configuration
for %%P in (launcher.cfg launcher.cfg%new_mark% launcher.cfg%old_mark%) do if exist %%P\* set "fault=%%P is a folder"
exit /b 0

rem ---- the homes of a new launcher.cfg

:check_homes
if not defined mode set "mode=ri"
set "known="
for %%M in (advanced legacy patch secure ri) do if /i "%mode%"=="%%M" set "known=%%M"
if not defined known set "fault=/mode must be one of advanced, legacy, patch, secure, ri"
if defined fault exit /b 0
set "mode=%known%"
set "target=%jvm%"
set "target_option=/jvm"
if "%mode%"=="advanced" set "target=%container%" & set "target_option=/container"
if "%mode%"=="legacy" set "target=%container%" & set "target_option=/container"
if "%target_option%"=="/container" call :need CONTAINER_HOME container
if not defined fault call :need JVM_HOME jvm
if not defined fault if not "%mode%"=="ri" call :need QUORVEL_HOME quorvel
if defined fault exit /b 0
if defined container if not exist "%container%\bin\java.exe" if not exist "%container%\jre\bin\java.exe" set "fault=/container names no Java home"
if defined jvm if not exist "%jvm%\bin\java.exe" if not exist "%jvm%\jre\bin\java.exe" set "fault=/jvm names no Java home"
if defined quorvel if not exist "%quorvel%\quorvel.jar" set "fault=/quorvel names a folder without quorvel.jar"
if defined container if not "%container:~1,1%"==":" set "fault=/container needs a path with a drive letter, the launcher knows no network paths"
if defined jvm if not "%jvm:~1,1%"==":" set "fault=/jvm needs a path with a drive letter, the launcher knows no network paths"
if defined quorvel if not "%quorvel:~1,1%"==":" set "fault=/quorvel needs a path with a drive letter, the launcher knows no network paths"
if defined fault exit /b 0
if not defined target exit /b 0
if /i "%target%"=="%here%" set "fault=%target_option% names the Java home itself, whose java.exe the launcher replaces; give another one"
for %%P in (%places%) do if not defined fault call :check_target %%~P
exit /b 0

:need
if defined %2 exit /b 0
if defined %1 exit /b 0
set "fault=the mode %mode% needs a %1: give /%2 HOME, or set the variable %1, or write launcher.cfg"
exit /b 0

rem The launcher starts the file of its own name in its own relative folder of the other home.
:check_target
if not exist "%target%\%1\%2" set "fault=a launcher in the place of %1\%2 starts the %1\%2 of the home of %target_option%, which is not there"
exit /b 0

rem ---- changing; fault is set by the first step that fails

rem rename FOLDER FROM TO: never overwrites; noted so that it can be undone.
:rename
ren "%1\%2" "%3" >nul 2>nul
if exist "%1\%2" set "fault=%1\%2 could not be renamed to %3, it is in use or the folder is protected"
if not exist "%1\%3" set "fault=%1\%2 could not be renamed to %3"
if not defined fault set "undo=%1 %3 %2 %undo%"
exit /b 0

rem What is prepared and cannot be finished is undone from the last step to the first.
:put_back
echo Failed: %fault%.
set "fault="
:undo_next
if not defined undo goto put_back_done
for /f "tokens=1-3*" %%A in ("%undo%") do (
  set "step=%%A %%B %%C"
  set "undo=%%D"
)
set "rest=%undo%"
call :rename %step%
if defined fault echo NOT PUT BACK: %fault%.
set "fault="
set "undo=%rest%"
goto undo_next
:put_back_done
for %%P in (bin\java.exe bin\javaw.exe jre\bin\java.exe jre\bin\javaw.exe launcher.cfg) do if exist %%P%new_mark% del /f /q %%P%new_mark%
echo What had been done in "%here%" was put back.
popd
endlocal & exit /b 1

:make_ready
copy /b /y "%package%bin\%2" "%1\%2%new_mark%" >nul 2>nul
if errorlevel 1 set "fault=%1\%2%new_mark% could not be written, or bin\%2 of the package not read"
if not exist %1\%2%new_mark% set "fault=%1\%2%new_mark% could not be written, or bin\%2 of the package not read"
if defined fault exit /b 0
"%SystemRoot%\System32\fc.exe" /b "%package%bin\%2" "%1\%2%new_mark%" >nul 2>nul
if errorlevel 1 set "fault=%1\%2%new_mark% is no true copy of bin\%2 of the package"
exit /b 0

rem put_in FOLDER NAME: a file that is no launcher is Java's own and the one to keep, also where an
rem update of Java has written it over the launcher; what was kept before is then out of date.
:put_in
if "%3"=="launcher" call :rename %1 %2 %2%old_mark%
if "%3-%4"=="other-other" call :rename %1 %2%kept_mark% %2%old_mark%
if not defined fault if "%3"=="other" call :rename %1 %2 %2%kept_mark%
if not defined fault call :rename %1 %2%new_mark% %2
if defined fault exit /b 0
if "%3"=="launcher" echo %1\%2: the launcher is brought up to date.
if "%3"=="other" echo %1\%2: the launcher is put in, %2%kept_mark% is what it replaces.
if "%3"=="none" echo %1\%2: the launcher is put in, where an earlier run had stopped.
exit /b 0

:restore
if "%4"=="none" exit /b 0
if "%3"=="launcher" call :rename %1 %2 %2%old_mark%
if "%3"=="other" call :rename %1 %2%kept_mark% %2%old_mark%
if "%3"=="other" exit /b 0
if not defined fault call :rename %1 %2%kept_mark% %2
if not defined fault echo %1\%2 is Java's own again.
exit /b 0

:remove_left_overs
set "left_over="
for %%P in (bin\java.exe bin\javaw.exe jre\bin\java.exe jre\bin\javaw.exe) do if exist %%P for %%M in (%new_mark% %old_mark%) do del /f /q %%P%%M >nul 2>nul
for %%M in (%new_mark% %old_mark%) do del /f /q launcher.cfg%%M >nul 2>nul
for %%P in (bin\java.exe bin\javaw.exe jre\bin\java.exe jre\bin\javaw.exe) do if exist %%P%old_mark% set "left_over=%%P%old_mark%"
exit /b 0

rem ---- launcher.cfg

rem The launcher reads UTF-8, and echo writes in the console's code page: it is changed for these lines.
:write_configuration
if exist launcher.cfg%new_mark% set "fault=launcher.cfg%new_mark% is in the way"
if defined fault exit /b 0
set "page="
for /f "tokens=*" %%A in ('"%SystemRoot%\System32\chcp.com"') do set "page=%%A"
if defined page for %%P in (%page%) do set "page=%%~nP"
"%SystemRoot%\System32\chcp.com" 65001 >nul 2>nul
set "line=# %written%"
call :write_line
set "line=LAUNCH_MODE=%mode%"
call :write_line
rem Command line, streams and start-up information reach Java untouched.
set "line=TRANSPARENT=true"
call :write_line
if defined container set "line=CONTAINER_HOME=%container%"
if defined container call :write_line
if defined jvm set "line=JVM_HOME=%jvm%"
if defined jvm call :write_line
if defined quorvel set "line=QUORVEL_HOME=%quorvel%"
if defined quorvel call :write_line
if defined page "%SystemRoot%\System32\chcp.com" %page% >nul 2>nul
if not exist launcher.cfg%new_mark% set "fault=launcher.cfg could not be written"
exit /b 0

rem What a for variable holds is not read once more as a command.
:write_line
for /f "delims=" %%L in ("%line%") do >>launcher.cfg%new_mark% echo %%L
exit /b 0

:take_configuration_out
if not exist launcher.cfg exit /b 0
set "is_ours=yes"
"%SystemRoot%\System32\find.exe" "%written%" launcher.cfg >nul 2>nul
if errorlevel 1 set "is_ours="
if not defined is_ours echo launcher.cfg stays, install.cmd did not write it.
if defined is_ours call :rename . launcher.cfg launcher.cfg%old_mark%
exit /b 0

rem ---- the verdict

:explain
if not "%mode%%jvm%%container%%quorvel%"=="" if not defined known echo launcher.cfg was there and stays as it is: the options were not used.
echo.
"%package%bin\explain_launch.exe" --launcher-home . --
if not "%errorlevel%"=="0" set "status=3"
set "folder=bin"
if not exist bin\java.exe set "folder=jre\bin"
if exist %folder%\javaw.exe "%package%bin\explain_launch.exe" --launcher-home . --name javaw.exe --
if not "%errorlevel%"=="0" set "status=3"
if "%status%"=="3" echo The launcher is installed, but by explain_launch a launch would not go through.
if "%status%"=="0" echo The launcher is installed in "%here%".
exit /b 0
