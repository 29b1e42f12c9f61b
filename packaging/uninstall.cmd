@echo off
rem Takes the launcher out of a Java home, which is then as before, byte for byte:
rem
rem   uninstall.cmd JAVA_HOME
rem
rem java.exe and javaw.exe are what the launcher had replaced, or what an update of Java has put there
rem since. launcher.cfg goes if install.cmd wrote it.
rem
rem Exit status
rem   0  done, or there was no launcher
rem   1  refused, or failed and put back: the Java home is as it was
rem   2  wrong usage
rem   4  done, but a launcher that is still running was left beside as *.quorvel-old
setlocal EnableExtensions DisableDelayedExpansion
if not "%~2"=="" echo usage: uninstall.cmd JAVA_HOME
if not "%~2"=="" exit /b 2
rem Without call, which would expand % and ^ once more; the status is the one of install.cmd.
"%~dp0install.cmd" /uninstall "%~1"
