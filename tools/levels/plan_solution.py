#!/usr/bin/env python3
"""Writes solution replays from plans, and the whole-game replay from them.

A replay is open-loop input, tick by tick, which is tedious to write by hand.
A plan says what the player should do ("goto 120 -40", "jump", "wait 30");
this script turns each step into key events, asking the headless runner where
the player stands after the steps so far (the game is deterministic, so the
answer holds for the finished replay too).

  plan_solution.py --sim build/vantle-sim --run build/run PLAN OUT
  plan_solution.py --sim build/vantle-sim --run build/run --game OUT A.replay B.replay ...

Plan lines (one step each, '#' starts a comment):
  level N        the level the replay starts on (first line)
  face YAW       turn on the spot to the heading (4.5 degrees per tick)
  turn DEG       turn by DEG (positive is left)
  walk N         hold the up key N ticks
  back N         hold the down key N ticks
  goto X Z       face the point and walk to it
  aim X Z        face the point
  jump           running jump; the up key is held until the landing
  hop            standing jump, until the landing
  wait N         no input for N ticks
  ride Z         no input until a belt has carried the delver north of Z
  finish         no input until the level is completed
  dodge N STEP   wait the fewest ticks (below N) after which STEP survives
                 (an enemy has walked on); STEP is any of the steps above
"""
import math
import os
import re
import subprocess
import sys
import tempfile

TRACE = re.compile(r"tick (\d+): (\S+) (\S+) (\S+) yaw (\S+) state (\d+) ground (\d+) air (\S+)")
STEP = 2.25  # walking distance per tick
TURN = 4.5   # turning per tick


class StepFailed(Exception):
    """A step that cannot be carried out from where the plan has got to (the player is gone,
    a jump never lands, a belt never carries far enough): fatal, except inside a dodge, where it
    only means that wait was not the one."""


class Plan:
    def __init__(self, sim, run):
        self.sim = os.path.abspath(sim)
        self.run = run
        self.level = 1
        self.cursor = 0
        self.spans = []  # (key, first tick, end tick)
        self.notes = []  # (tick, comment)

    def press(self, key, ticks):
        self.spans.append((key, self.cursor, self.cursor + ticks))

    def events(self):
        end = max([e for _, _, e in self.spans] + [self.cursor]) + 1
        held = {}
        for key, a, b in self.spans:
            for t in range(a, b):
                held.setdefault(t, set()).add(key)
        out, before = [], set()
        for t in range(end):
            now = held.get(t, set())
            for key in sorted(now - before):
                out.append((t, "down", key))
            for key in sorted(before - now):
                out.append((t, "up", key))
            before = now
        return out

    def text(self, ticks):
        lines = ["vantle2-replay 1", "level %d" % self.level, "lives 3", "ticks %d" % ticks]
        notes = sorted(self.notes)
        for t, what, key in self.events():
            while notes and notes[0][0] <= t:
                lines.append("# " + notes.pop(0)[1])
            lines.append("%d %s %s" % (t, what, key))
        for n in notes:
            lines.append("# " + n[1])
        return "\n".join(lines) + "\n"

    def simulate(self, ticks):
        with tempfile.NamedTemporaryFile("w", suffix=".replay", delete=False) as f:
            f.write(self.text(ticks))
            path = f.name
        try:
            out = subprocess.run([self.sim, "--trace", path], cwd=self.run, capture_output=True, text=True).stdout
        finally:
            os.unlink(path)
        states, lines = {}, []
        for line in out.splitlines():
            m = TRACE.match(line)
            if m:
                t = int(m.group(1))
                states[t] = (float(m.group(2)), float(m.group(3)), float(m.group(4)), float(m.group(5)),
                             int(m.group(6)), int(m.group(7)), float(m.group(8)))
            else:
                lines.append(line)
        return states, lines

    def state(self):
        """Where the player stands before the tick at the cursor."""
        states, lines = self.simulate(self.cursor + 1)
        if self.cursor == 0:
            return None
        if self.cursor - 1 not in states:
            raise StepFailed("no player before tick %d: %s" % (self.cursor, "; ".join(lines)))
        return states[self.cursor - 1]

    def face(self, yaw):
        # Turning only works on the ground, so check the heading reached and go on.
        for _ in range(4):
            s = self.state()
            now = s[3] if s else self.start_yaw()
            delta = (yaw - now + 180.0) % 360.0 - 180.0
            n = int(round(abs(delta) / TURN))
            if not n:
                return
            self.press("LEFT" if delta > 0 else "RIGHT", n)
            self.cursor += n

    def start_yaw(self):
        states, _ = self.simulate(1)
        return states[0][3] if states else 0.0

    def goto(self, x, z):
        for _ in range(2):
            s = self.state() or self.simulate(1)[0][0]
            dx, dz = x - s[0], z - s[2]
            dist = math.hypot(dx, dz)
            if dist < 8.0:  # close enough; turning round costs more than it gains
                return
            self.face(math.degrees(math.atan2(dx, dz)))
            n = int(round(dist / STEP))
            self.press("UP", n)
            self.cursor += n

    def until_ground(self, first):
        states, _ = self.simulate(self.cursor + 400)
        for t in range(first, self.cursor + 400):
            if t in states and states[t][5]:
                return t
        raise StepFailed("the jump from tick %d never lands" % self.cursor)

    def jump(self, running):
        # A jump needs ground under the feet: wait for it (the start of a level drops one unit).
        states, _ = self.simulate(self.cursor + 400)
        while self.cursor > 0 and self.cursor - 1 in states and not states[self.cursor - 1][5]:
            self.cursor += 1
        if self.cursor == 0:
            self.cursor = self.until_ground(0) + 1
        start = self.cursor
        if running:
            self.spans.append(("UP", start, start + 1))
        self.spans.append(("SPACE", start, start + 1))
        self.cursor = start + 1
        land = self.until_ground(start + 2)
        if running:
            self.spans[-2] = ("UP", start, land + 1)
        self.cursor = land + 1

    def finish(self):
        states, lines = self.simulate(self.cursor + 4000)
        for line in lines:
            m = re.match(r"level %02d: completed at tick (\d+)" % self.level, line)
            if m:
                self.cursor = int(m.group(1)) + 1
                return
        raise StepFailed("the level is not completed: %s" % "; ".join(lines))

    def survives(self):
        _, lines = self.simulate(self.cursor + 5)
        return not any(" died " in line for line in lines)

    def dodge(self, limit, words, lineno):
        saved = (self.cursor, list(self.spans), list(self.notes))
        for w in range(limit):
            self.cursor, self.spans, self.notes = saved[0] + w, list(saved[1]), list(saved[2])
            try:
                self.step(words, lineno)
            except StepFailed:
                continue
            if self.survives():
                self.notes.append((saved[0], "(waited %d ticks)" % w))
                return
        sys.exit("plan line %d: no wait below %d lets '%s' through" % (lineno, limit, " ".join(words)))

    def step(self, words, lineno):
        if words[0] == "dodge":
            self.dodge(int(words[1]), words[2:], lineno)
            return
        cmd, args = words[0], [float(w) for w in words[1:]]
        self.notes.append((self.cursor, " ".join(words)))
        if cmd == "level":
            self.level = int(args[0])
            self.notes.pop()
        elif cmd == "face":
            self.face(args[0])
        elif cmd == "turn":
            s = self.state()
            self.face((s[3] if s else self.start_yaw()) + args[0])
        elif cmd in ("walk", "back"):
            self.press("UP" if cmd == "walk" else "DOWN", int(args[0]))
            self.cursor += int(args[0])
        elif cmd == "aim":
            s = self.state() or self.simulate(1)[0][0]
            self.face(math.degrees(math.atan2(args[0] - s[0], args[1] - s[2])))
        elif cmd == "goto":
            self.goto(args[0], args[1])
        elif cmd in ("jump", "hop"):
            self.jump(cmd == "jump")
        elif cmd == "ride":
            states, _ = self.simulate(self.cursor + 1000)
            t = self.cursor
            while t in states and states[t][2] > args[0]:
                t += 1
            if t not in states:
                raise StepFailed("never carried past z %g" % args[0])
            self.cursor = t + 1
        elif cmd == "wait":
            self.cursor += int(args[0])
        elif cmd == "finish":
            self.finish()
        else:
            sys.exit("plan line %d: unknown step '%s'" % (lineno, cmd))


def make_solution(sim, run, plan_path, out_path):
    plan = Plan(sim, run)
    with open(plan_path) as f:
        for n, raw in enumerate(f, 1):
            words = raw.split("#", 1)[0].split()
            if words:
                try:
                    plan.step(words, n)
                except StepFailed as failed:
                    sys.exit("plan line %d: %s" % (n, failed))
    with open(out_path, "w") as f:
        f.write("# Written by tools/levels/plan_solution.py from %s\n" % os.path.basename(plan_path))
        f.write(plan.text(plan.cursor + 1))


def read_replay(path):
    events, level, ticks = [], 1, 0
    for raw in open(path):
        words = raw.split("#", 1)[0].split()
        if not words or words[0] == "vantle2-replay":
            continue
        if words[0] == "level":
            level = int(words[1])
        elif words[0] == "ticks":
            ticks = int(words[1])
        elif words[0].isdigit():
            events.append((int(words[0]), words[1:]))
    return level, ticks, events


def make_game(sim, run, out_path, replays):
    """Chains level solutions: each level starts the tick after the last one's tally ends."""
    lines, offset, held = [], 0, set()
    for path in replays:
        level, ticks, events = read_replay(path)
        out = subprocess.run([os.path.abspath(sim), os.path.abspath(path)], cwd=run, capture_output=True,
                             text=True).stdout
        m = re.search(r"level %02d: completed at tick (\d+)" % level, out)
        if not m:
            sys.exit("%s does not complete level %d" % (path, level))
        end = int(m.group(1))
        lines.append("# level %02d from %s" % (level, os.path.basename(path)))
        for key in sorted(held):
            lines.append("%d up %s" % (offset, key))
        held = set()
        for t, what in events:
            if t > end:
                break
            lines.append("%d %s" % (offset + t, " ".join(what)))
            if what[0] == "down":
                held.add(what[1])
            elif what[0] == "up":
                held.discard(what[1])
        offset += end + 1
    with open(out_path, "w") as f:
        f.write("# The whole game from level 1 with three lives, written by tools/levels/plan_solution.py\n")
        f.write("vantle2-replay 1\nlevel 1\nlives 3\nscore 0\nticks %d\n" % (offset + 1))
        f.write("\n".join(lines) + "\n")


def main(argv):
    sim, run, game, rest = "build/vantle-sim", "build/run", None, []
    i = 0
    while i < len(argv):
        if argv[i] in ("--sim", "--run", "--game") and i + 1 < len(argv):
            if argv[i] == "--sim":
                sim = argv[i + 1]
            elif argv[i] == "--run":
                run = argv[i + 1]
            else:
                game = argv[i + 1]
            i += 2
        else:
            rest.append(argv[i])
            i += 1
    if game:
        make_game(sim, run, game, rest)
    elif len(rest) == 2:
        make_solution(sim, run, rest[0], rest[1])
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main(sys.argv[1:])
