#!/usr/bin/python3
"""models/egypt.ksm and textures/EGYPT-TE.png: the temple court of the game scene.

Paints the reliefs, models everything, lets Blender bake colours and light, and mixes the texture; the modules are in court/.
Blender runs without a display. COURT_WORK=directory keeps what is baked, and a second run with the same directory and
COURT_BAKE=no only mixes again; COURT_SAMPLES sets the quality (default 6; 2 is enough to see what one is doing).
"""
import os
import subprocess
import sys
import tempfile

import numpy as np

import ksm
from court import keys, measure, mix, model, paving, preview, reliefs, sky

HERE = os.path.dirname(os.path.abspath(__file__))


def bake(work):
    samples = os.environ.get("COURT_SAMPLES", "6")
    command = ["blender", "--background", "--factory-startup", "--python-exit-code", "1", "--python",
               os.path.join(HERE, "court", "bake.py"), "--", work, samples]
    run = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    print("\n".join(line for line in run.stdout.splitlines() if line.startswith("baked") or run.returncode))
    if run.returncode:
        raise SystemExit("blender failed")


def make(out, work):
    court = model.build()
    print(f"{len(court.points)} triangles, texels at {court.scale:.2f} of the wished density")
    # What is not baked is painted in every run.
    sky.paint(work)
    keys.paint_plate(work)
    if os.environ.get("COURT_BAKE") != "no":
        reliefs.paint_all(work)
        paving.paint(work)
        bake(work)
    model_path, texture_path = os.path.join(out, "models", "egypt.ksm"), os.path.join(out, "textures", "EGYPT-TE.png")
    for path in (model_path, texture_path):
        os.makedirs(os.path.dirname(path), exist_ok=True)
    ksm.write(model_path, np.concatenate([court.points, court.texture], 2))
    clipped = mix.write(court, work, texture_path)
    print(f"{clipped:.1%} of the texels are at full brightness in a channel")
    lines, calm = measure.report(*preview.load(model_path, texture_path))
    print("\n".join(lines))
    if not calm:
        raise SystemExit("what lies behind the well is too bright")


if __name__ == "__main__":
    if "COURT_WORK" in os.environ:
        os.makedirs(os.environ["COURT_WORK"], exist_ok=True)
        make(sys.argv[1], os.path.abspath(os.environ["COURT_WORK"]))
    else:
        with tempfile.TemporaryDirectory() as directory:
            make(sys.argv[1], directory)
