"""Drives the real program: real keys and clicks, the accessibility tree, and the pixels on the screen."""

from .case import PROGRAM_NAME, SAMPLES, UiTestCase, main
from .dialog import Dialog
from .dialog_case import DialogTestCase
from .display import Display
from .program import Program
from .screen import Screen
from .view import BACKGROUND, View
from .wait import wait_for

__all__ = ["BACKGROUND", "PROGRAM_NAME", "SAMPLES", "Dialog", "DialogTestCase", "Display", "Program", "Screen", "UiTestCase", "View",
           "main", "wait_for"]
