// Commands.h — the subcommands of the krmwtarn tool; argv[0] is the command word.
#pragma once

int krmwtarnClasses(int argc, char** argv);
int krmwtarnClass(int argc, char** argv);
int krmwtarnLinks(int argc, char** argv);
int krmwtarnDemo(int argc, char** argv);
int krmwtarnGraph(int argc, char** argv);
int krmwtarnExpand(int argc, char** argv);
int krmwtarnExport(int argc, char** argv);
int krmwtarnImport(int argc, char** argv);
int krmwtarnViews(int argc, char** argv);
int krmwtarnView(int argc, char** argv);
