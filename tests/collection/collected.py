"""All kinds of movies of the collection."""

import cameras
import computers
import discs
import matroska
import quicktime
import web

KINDS = [
    kind for part in (cameras, discs, computers, quicktime, matroska, web) for kind in part.KINDS
]
