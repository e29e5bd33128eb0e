#pragma once

#include <functional>

class Movie;

/// What a job reports to: the main frame. Everything happens on the GUI thread, and the job must
/// not be freed inside a call.
class MovieListener {
  public:
    /// The job's probe has ended, or a tool that it needs is missing.
    virtual void MovieInfos(Movie* movie) = 0;
    /// The job's transcode or subtitle step has ended.
    virtual void MovieConvert(Movie* movie) = 0;
    /// The job's progress may have changed.
    virtual void MovieUpdate(Movie* movie) = 0;
    /// Runs `action` at once or, while the user is being asked something, after the answer.
    virtual void RunUnlessAsking(std::function<void()> action) = 0;

  protected:
    ~MovieListener() = default;
};
