"""The light of the game scene, computed as the fixed-function pipeline does."""
import numpy as np

# Material ambient times the light's and the pipeline's own ambient; material diffuse times the light's.
AMBIENT, DIFFUSE = 0.5 * (0.2 + 0.4), 0.8
# With lighting off the scenery is drawn in this grey.
UNLIT = 0.8
# A game begins under a black veil of this opacity, which is gone with the camera's flight; its first second ends at this fade.
VEIL, FIRST_SECOND = 0.4, 0.2
# Mean place of the wandering light, and two ends of its way: near the gate, and low behind the player.
MEAN = (5.0, 10.0, 24.0)
NEAR_GATE, BEHIND_PLAYER = (12.0, 46.0, 31.0), (-3.0, -24.0, 15.0)


def factors(points, light):
    """For triangles (count x 3 x 3) the factor of the texture at each corner; None for light means lighting off."""
    if light is None:
        return np.full(points.shape[:2], UNLIT)
    normal = np.cross(points[:, 1] - points[:, 0], points[:, 2] - points[:, 0])
    normal /= np.maximum(np.linalg.norm(normal, axis=1, keepdims=True), 1e-12)
    ray = np.array(light) - points
    ray /= np.linalg.norm(ray, axis=2, keepdims=True)
    return np.minimum(AMBIENT + DIFFUSE * np.clip((ray * normal[:, None]).sum(2), 0, 1), 1.0)
