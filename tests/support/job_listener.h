#pragma once

#include <functional>

#include "convert/MovieListener.h"

/// Takes a job's reports and does nothing about them.
class JobListener final : public MovieListener {
  public:
    void MovieInfos(Movie*) override {}
    void MovieConvert(Movie*) override {}
    void MovieUpdate(Movie*) override {}
    void RunUnlessAsking(std::function<void()> action) override { action(); }
};
