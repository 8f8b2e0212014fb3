"""What a screen reader speaks by itself."""

import tree
from tree import Role


class Announcements:
    """Hears notifications that come into sight. Use as a context manager."""

    def __init__(self):
        self.heard = []
        self._listener = tree.EventListener.new(self._hear)

    def __enter__(self):
        self._listener.register("object:state-changed:showing")
        return self

    def __exit__(self, *_):
        self._listener.deregister("object:state-changed:showing")

    def _hear(self, event):
        if event.detail1 and tree.role_of(event.source) == Role.NOTIFICATION:
            self.heard.append(tree.name_of(event.source))
