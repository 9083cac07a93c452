// Commands.h — the subcommands of the krmwtarn tool; argv[0] is the command word.
#pragma once

int krmwtarnClasses(int argc, char** argv);
int krmwtarnClass(int argc, char** argv);
int krmwtarnLinks(int argc, char** argv);
int krmwtarnDemo(int argc, char** argv);
