// A shared library that lacks the plug-in entry point.
extern "C" int vexplot_not_a_plugin_marker;
int vexplot_not_a_plugin_marker = 1;
