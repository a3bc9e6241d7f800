"""What the menu holds: the rows of its submenus, each with the setting that it switches."""

TRIGGERS = {
    "Magic Mouse": [
        ("Click with One Finger in Center", "mouseClick1Center"),
        ("Click with Two Fingers", "mouseClick2"), ("Click with Three Fingers", "mouseClick3"),
        ("Tap with Three Fingers", "mouseTap3"), None, ("Pinch to Zoom", "mousePinchZoom"),
        ("Rotate with Two Fingers", "mouseRotate"),
        ("3-Finger Swipe: Back/Forward", "mouseSwipe3Nav")],
    "Trackpad": [
        ("Click with Three Fingers", "padClick3"), ("Tap with Three Fingers", "padTap3"),
        ("Tap with Four Fingers", "padTap4")],
}
# What is shown where a gesture that was switched on may meet one of the desktop's.
CONFLICT = "Heads-up: possible gesture overlap"
# The window that explains the permission.
SETUP = "Set Up Velotap"
