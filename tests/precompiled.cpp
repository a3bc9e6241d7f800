// A program without a test: what counts are the headers that were compiled for it.
