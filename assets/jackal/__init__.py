"""The temple jackal: shape.py builds its mesh, motion.py moves it, skin.py paints it."""
