"""Scripting the Vexplot 3-D plotting control from Python.

    import numpy as np, vexplot
    ctl = vexplot.Control(width=640, height=480, settings="memory")   # headless
    ctl.CopyArrayData(z)                             # z[row, column] = z[y, x]
    ctl.ShowXMajorGrid = 0                           # properties by name
    ok, xmin, xmax = ctl.GetXRange()                 # out arguments come back
    ctl.save_image("plot.png")

Every member of the control is reached by its dispatch name, as automation
clients reach it: reading an attribute reads a property or gives a method
to call; setting one writes a property. See the README's section on Python
for the conversions, the array orientation, the events and the windows.
"""

import enum as _enum

from . import _vexplot
from ._vexplot import AutomationError, ComObject, exec, process_events, register_engine  # noqa: F401

__version__ = _vexplot.__version__

__all__ = ["Control", "AutomationError", "ComObject", "exec", "process_events", "register_engine"]


class _Method:
    """A method of one control, bound by dispatch id."""

    __slots__ = ("_control", "_dispid", "__name__")

    def __init__(self, control, dispid, name):
        self._control = control
        self._dispid = dispid
        self.__name__ = name

    def __call__(self, *args):
        return self._control.invoke(self._dispid, *args)

    def __repr__(self):
        return f"<vexplot method {self.__name__} (dispid {self._dispid})>"


class Control(_vexplot.ControlBase):
    """The control: Control(width=640, height=480, show=False, settings="user").

    Headless by default (pictures through image() and save_image()); with
    show=True it lives in a window the user can turn, pan and zoom while
    the script goes on driving it (see process_events() and exec()).

    settings chooses where the control keeps its settings: "user" (the
    user's store: every property written becomes the default of the
    controls made after it), "memory" (a store of this control's own that
    goes with it: a batch job changes nobody's defaults) or the path of a
    settings file (the defaults of one project).
    """

    def __getattr__(self, name):
        # Reached only for names Python does not know: the dispatch names.
        if name.startswith("__"):
            raise AttributeError(name)
        dispid, is_property = self._lookup(name)
        if is_property:
            return self.invoke(dispid)
        return _Method(self, dispid, name)

    def __setattr__(self, name, value):
        dispid, is_property = self._lookup(name)
        if not is_property:
            raise AttributeError(f"{name} is a method of the control, not a property")
        self._put(dispid, value)

    def __dir__(self):
        return sorted(set(super().__dir__()) | set(self.members()))

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.close()
        return False


def _add_enumerations(namespace):
    # Each enumeration of the type library as an IntEnum (vexplot.enumWindows.wndInfo),
    # and its values as plain constants (vexplot.wndInfo) where the name is free.
    for enum_name, values in _vexplot._enumerations():
        namespace[enum_name] = _enum.IntEnum(enum_name, values, module=__name__)
        __all__.append(enum_name)
        for name, value in values:
            if name not in namespace:
                namespace[name] = value


_add_enumerations(globals())
