"""The temple court of the game scene: reliefs, geometry, baked light, and the texture made of them.

The parts, in the order in which make_court.py runs them:
    carving, signs, reliefs, paving        paint what is carved and painted on the stones, each a colour and a height picture
    sky, keys                              paint what goes into the texture as it is
    grid, packing                          rectangular patches of surface and their places in the one texture
    gate, courtyard, statues, landscape    what stands where
    bake (inside Blender, with materials)  colours, directions and light of every texel
    light, mix                             the light of the game, and the final texture
    preview, measure                       pictures as the game draws them, and their brightness where it matters
"""
