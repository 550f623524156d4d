// The part of the time that is looked at. All charts follow it.

const SHORTEST = 0.01; // seconds

export class Span {
  constructor(length) {
    this.length = Math.max(length, SHORTEST);
    this.from = 0;
    this.to = this.length;
    this.followers = [];
  }

  /// More has come. Who looks at all goes on to do so.
  grow(length) {
    const isWhole = this.from === 0 && this.to === this.length;
    this.length = Math.max(length, SHORTEST);
    this.set(this.from, isWhole ? this.length : Math.min(this.to, this.length));
  }

  set(from, to) {
    const size = Math.min(Math.max(to - from, SHORTEST), this.length);
    this.from = Math.min(Math.max(from, 0), this.length - size);
    this.to = this.from + size;
    this.followers.forEach((follow) => follow());
  }

  pan(part) {
    const by = (this.to - this.from) * part;
    this.set(this.from + by, this.to + by);
  }

  /// @param at stays where it is
  zoom(factor, at = (this.from + this.to) / 2) {
    this.set(at - (at - this.from) * factor, at + (this.to - at) * factor);
  }

  all() {
    this.set(0, this.length);
  }

  /// Comes to see a moment.
  show(at) {
    const size = this.to - this.from;
    if (at < this.from || at > this.to) {
      this.set(at - size / 2, at + size / 2);
    }
  }
}
