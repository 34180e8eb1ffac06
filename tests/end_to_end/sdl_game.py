#!/usr/bin/env python3
"""A window as today's clients open it, through SDL. It prints each key that goes down with the modifiers
that the event has, and each line of text that Enter ends.

Usage: sdl_game.py TITLE FRAMES_A_SECOND. SDL_VIDEO_X11_WMCLASS names the class of the window.
"""
import os
import sys
import time

os.environ["SDL_AUDIODRIVER"] = "dummy"
os.environ["PYGAME_HIDE_SUPPORT_PROMPT"] = "1"
import pygame  # noqa: E402

MODIFIERS = ((pygame.KMOD_CTRL, "Ctrl+"), (pygame.KMOD_ALT, "Alt+"), (pygame.KMOD_SHIFT, "Shift+"))
ONES = (pygame.K_LCTRL, pygame.K_RCTRL, pygame.K_LALT, pygame.K_RALT, pygame.K_LSHIFT, pygame.K_RSHIFT)

pygame.display.init()
pygame.display.set_mode((500, 300))
pygame.display.set_caption(sys.argv[1])
pygame.key.start_text_input()
frame, text, chord = 1 / int(sys.argv[2]), "", False
while True:
    start = time.monotonic()
    for event in pygame.event.get():
        if event.type == pygame.QUIT:
            sys.exit()
        if event.type == pygame.TEXTINPUT and not chord:  # which types nothing in a game
            text += event.text
        elif event.type == pygame.KEYDOWN and event.key == pygame.K_RETURN and text:
            print("say " + text, flush=True)
            text = ""
        elif event.type == pygame.KEYDOWN and event.key not in ONES and (
                event.mod & (pygame.KMOD_CTRL | pygame.KMOD_ALT) or event.key > 127 or
                event.key == pygame.K_RETURN):
            marks = "".join(name for mask, name in MODIFIERS if event.mod & mask)
            print(f"key {marks}{pygame.key.name(event.key).upper()}", flush=True)
        if event.type == pygame.KEYDOWN and event.key not in ONES:
            chord = bool(event.mod & (pygame.KMOD_CTRL | pygame.KMOD_ALT))
    pygame.display.flip()
    time.sleep(max(0.0, frame - (time.monotonic() - start)))
