"""What the tests of the whole need: a desktop of their own, the real host on it, and the history file behind it."""
