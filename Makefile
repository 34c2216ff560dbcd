# The two set-up commands of the README: `make run` and `make test`.
BUILD_DIR ?= build
JOBS ?= $(shell nproc)
CMAKE_FLAGS ?=
FUZZ_DIR ?= build-fuzz
FUZZ_SECONDS ?= 60
BENCH_DIR ?= build-bench

.PHONY: all deps build run test fuzz test-font bench regen-expected

all: build

deps:
	@scripts/install-deps.sh test

build: deps
	cmake -S . -B $(BUILD_DIR) $(CMAKE_FLAGS)
	cmake --build $(BUILD_DIR) -j $(JOBS)

run: build
	@scripts/run.sh $(BUILD_DIR)

test: build
	cd $(BUILD_DIR) && ctest --output-on-failure -j $(JOBS)

FUZZ_DIR ?= build-fuzz
FUZZ_SECONDS ?= 60
BENCH_DIR ?= build-bench

.PHONY: all deps build run test fuzz test-font bench regen-expected

# Regenerates the tests' own font (committed; only needed after changing the script).
test-font:
	@scripts/install-deps.sh font
	/usr/bin/python3 tests/fonts/make_test_font.py
